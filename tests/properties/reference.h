#pragma once
// Comparisons done the slow and obvious way, to hold the library's against.
#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <dependency/comparisons/compare_graphs.h>

namespace dependency::test {

/// One row of a detail comparison.
struct FlatRow {
    std::string type;  ///< the ID of a dependency's type, empty for a property
    ::comparisons::BySide<std::optional<std::string>> sides;
    bool changed = false;

    friend auto operator<=>(const FlatRow&, const FlatRow&) = default;
};

/// One tree entry with all that can be seen of it.
struct FlatEntry {
    ::comparisons::BySide<std::optional<std::string>> labels;
    ::comparisons::BySide<std::optional<std::string>> parents;
    ::comparisons::BySide<std::optional<std::uint32_t>> positions;
    bool changed = false;
    std::vector<FlatRow> rows;  ///< sorted

    friend auto operator<=>(const FlatEntry&, const FlatEntry&) = default;
};

/// Order:  sorted.
/// Throws: `std::logic_error` for rows or dependency types that are out of order.
[[nodiscard]] std::vector<FlatEntry> flattened(const comparisons::GraphComparison& comparison);

struct Loss {
    ::comparisons::Side side;
    comparisons::ItemID lost;
    comparisons::ItemID kept;

    friend bool operator==(const Loss&, const Loss&) = default;
};

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

    /// What `flattened` makes of the comparison.
    ///
    /// Requires: no losses, no paired kinds.
    [[nodiscard]] std::vector<FlatEntry> entries() const;

  private:
    ::comparisons::BySide<std::shared_ptr<const graph::Graph>> graphs_;
    std::vector<comparisons::ItemEdit> edits_;
    std::vector<Loss> losses_;
};

}  // namespace dependency::test
