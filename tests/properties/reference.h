#pragma once
// Comparisons done the slow and obvious way, to hold the library's against.
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <dependency/comparisons/compare_graphs.h>

namespace dependency::test {

/// Returns: of each entry the edit, its place on either side and the rows of its detail. Sorted.
[[nodiscard]] std::vector<std::string> linesOf(const comparisons::GraphComparison& comparison);

using Loss = std::tuple<::comparisons::Side, comparisons::ItemID /*lost*/, comparisons::ItemID>;

class Reference {
  public:
    Reference(const std::shared_ptr<const graph::Graph>& leftGraph,
              const std::shared_ptr<const graph::Graph>& rightGraph);

    /// What `matchGraphs` returns, in another order.
    [[nodiscard]] const std::vector<comparisons::ItemEdit>& edits() const { return edits_; }
    /// The groups that the matching leaves out.
    [[nodiscard]] const std::vector<Loss>& losses() const { return losses_; }
    /// Coinciding keys pair a node with a group.
    [[nodiscard]] bool pairsKinds() const;

    /// What `linesOf` makes of the comparison.
    ///
    /// Requires: no losses, no paired kinds.
    [[nodiscard]] std::vector<std::string> lines() const;

  private:
    ::comparisons::BySide<std::shared_ptr<const graph::Graph>> graphs_;
    std::vector<comparisons::ItemEdit> edits_;
    std::vector<Loss> losses_;
};

}  // namespace dependency::test
