#pragma once
// A comparison under every choice of filters, for reports whose readers switch filters.
#include <cstdint>
#include <memory>
#include <vector>

#include <comparisons/viewmodel/parameter_table.h>

#include "presentation/presented_tree.h"

namespace depcompare {

/// One bit per choice of filters, by its place among all of them.
using Choices = std::uint8_t;

/// One table of an entry's detail with all its rows, and for each row the choices that show it.
struct SwitchedTable {
    ::comparisons::viewmodel::parameter::tessel::ParameterTable table;
    std::vector<Choices> choices;
};

/// Lifetime: the tables are valid as long as the view model.
struct SwitchedDetail {
    std::shared_ptr<PresentedTree::ViewModel> viewModel;
    std::vector<SwitchedTable> tables;  ///< in display order; several for a combined detail
};

class SwitchedTrees {
  public:
    using Match = PresentedTree::Match;

    /// `known` serves for its own choice of filters, with everything it has already counted.
    ///
    /// Requires: `comparison` non-null, `known` a tree of it.
    /// Lifetime: `known` outlives this.
    SwitchedTrees(const std::shared_ptr<const dependency::comparisons::GraphComparison>& comparison,
                  const PresentedTree& known);

    /// Returns: a tree for each choice of filters, the one without any first. Entries have the same
    ///          places in all of them.
    [[nodiscard]] const std::vector<const PresentedTree*>& trees() const { return trees_; }
    [[nodiscard]] const PresentedTree& unfiltered() const { return *trees_.front(); }

    [[nodiscard]] Choices choicesThatShow(std::size_t entry) const;
    [[nodiscard]] SwitchedDetail detail(std::size_t entry) const;

  private:
    std::vector<std::unique_ptr<const PresentedTree>> made_;
    std::vector<const PresentedTree*> trees_;
};

}  // namespace depcompare
