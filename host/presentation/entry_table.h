#pragma once
// The rows of an entry as cells of text.
#include <string>
#include <vector>

#include <comparisons/edit_type.h>
#include <comparisons/viewmodel/parameter_table.h>

#include "presentation/presented_tree.h"

namespace depcompare {

/// Text of one or both sides.
struct TableCell {
    std::u16string before;  ///< the whole text if the sides agree, or only one exists
    std::u16string after;
    bool changed = false;

    [[nodiscard]] bool empty() const { return !changed && before.empty(); }
    /// Returns: "before → after" if it changed, else the one text.
    [[nodiscard]] std::u16string text() const;

    friend bool operator==(const TableCell&, const TableCell&) = default;
};

struct TableRow {
    ::comparisons::EditType edit = ::comparisons::EditType::unchanged;
    std::u16string caption;  ///< of the part of the detail that the row belongs to
    TableCell name;
    TableCell value;

    friend bool operator==(const TableRow&, const TableRow&) = default;
};

struct EntryTable {
    TableRow heading;  ///< its cells are the labels of the columns
    std::vector<TableRow> rows;
};

/// Returns: the tables that a view model consists of, one per part of a combined one.
[[nodiscard]] std::vector<::comparisons::viewmodel::parameter::tessel::ParameterTable> tablesOf(
    const PresentedTree::ViewModel& viewModel);

/// Returns: the rows of an entry that is visible for its telling properties only, if they are short
///          enough for its label; else none.
[[nodiscard]] std::vector<TableRow> rowsInLabel(const PresentedTree& tree,
                                                PresentedTree::Match match);

/// Returns: the rows of the entry that the filters leave, those of one part after those of another,
///          in text that a terminal may get; none if the entry has no detail, or if its label has them. A caption is the first
///          line of a part's label, without its introduction. In a part of a group's detail,
///          dependencies of the left side come before the others. The cell of a dependency without a
///          component, which repeats the name of an end, is empty.
[[nodiscard]] EntryTable tableOf(const PresentedTree& tree, PresentedTree::Match match);

}  // namespace depcompare
