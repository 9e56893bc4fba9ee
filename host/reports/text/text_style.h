#pragma once
// What the text report may use of a terminal.
#include <cstddef>
#include <optional>

namespace depcompare {

struct TextStyle {
    bool colours = false;
    std::optional<std::size_t> columns;  ///< of the terminal; without them long texts are not
                                         ///< shortened, only broken into lines

    /// Returns: the width to lay out for.
    [[nodiscard]] std::size_t width() const { return columns.value_or(80); }
};

}  // namespace depcompare
