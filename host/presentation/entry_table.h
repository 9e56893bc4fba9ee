#pragma once
// The table of an entry as cells of text.
#include <string>
#include <vector>

#include <comparisons/edit_type.h>

#include "presentation/presented_tree.h"

namespace depcompare {

/// Text of one or both sides.
struct TextCell {
    std::u16string before;  ///< all of it where the sides agree or only one is there
    std::u16string after;
    bool changed = false;

    [[nodiscard]] bool empty() const { return !changed && before.empty(); }
    /// Returns: "before → after" where it changed.
    [[nodiscard]] std::u16string text() const;

    friend bool operator==(const TextCell&, const TextCell&) = default;
};

struct TextRow {
    ::comparisons::EditType edit = ::comparisons::EditType::unchanged;
    std::u16string caption;  ///< of the part of the detail that the row belongs to
    TextCell name;
    TextCell value;

    friend bool operator==(const TextRow&, const TextRow&) = default;
};

struct TextTable {
    TextRow heading;  ///< its cells are the labels of the columns
    std::vector<TextRow> rows;
};

/// Returns: the rows that `viewModel` shows, parts one after the other, in text that a terminal may
///          get. A caption is the first line of a part's label, without what introduces it. Where a
///          dependency has no component, so that its row repeats the name of an end of `edit`, the
///          cell is empty.
[[nodiscard]] TextTable textTableOf(const PresentedTree::ViewModel& viewModel,
                                    const dependency::comparisons::ItemEdit& edit);

}  // namespace depcompare
