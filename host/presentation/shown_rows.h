#pragma once
// Which rows of an entry's whole detail the filters leave.
#include <vector>

#include <comparisons/viewmodel/parameter_table.h>

#include "presentation/presented_tree.h"

namespace depcompare {

/// Returns: for each row of the entry's detail, those of one table after those of another, whether
///          the tree shows it. Of rows that look alike, any may be the shown one.
///
/// Complexity: that of making the detail's view model, unless the filters leave all rows or none.
[[nodiscard]] std::vector<bool> shownRows(const PresentedTree& tree, PresentedTree::Match match);

/// As above, for a caller that has the tables of `tree.wholeDetail(match)`.
[[nodiscard]] std::vector<bool> shownRows(
    const PresentedTree& tree, PresentedTree::Match match,
    const std::vector<::comparisons::viewmodel::parameter::tessel::ParameterTable>& whole);

}  // namespace depcompare
