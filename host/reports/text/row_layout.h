#pragma once
// The cells of a row as lines of a given width.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "presentation/entry_table.h"

namespace depcompare {

/// The room that the cells of a row have. Captions and names are padded to their widths.
struct RowLayout {
    std::u16string_view separator;  ///< between name and value
    std::size_t columns = 0;        ///< for everything after the sign
    std::size_t captionColumns = 0;
    std::size_t nameColumns = 0;
    bool shortens = false;  ///< rather than breaking lines
};

/// Returns: at least one line, not coloured, without the sign. Text that is too wide is shortened, or
///          continues below its beginning; a change is not shortened if both sides would look alike.
[[nodiscard]] std::vector<std::u16string> linesOf(const TableRow& row, const RowLayout& layout);

/// Returns: the labels of the columns of this layout: on one line if they fit, else each on a line of
///          its own, moved to the left as far as necessary.
[[nodiscard]] std::vector<std::u16string> headingLinesOf(const TableRow& heading,
                                                         const RowLayout& layout);

}  // namespace depcompare
