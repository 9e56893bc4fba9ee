#pragma once
// Text of graphs as a terminal may get it: no control characters, nothing that turns the direction.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace depcompare {

/// Returns: the text with control characters, line separators and marks of direction written as
///          escapes (\n, \x1b, \u202e).
[[nodiscard]] std::u16string visible(std::u16string_view text);
[[nodiscard]] std::string visible(std::string_view utf8);

/// Returns: how many columns of a terminal the text takes, about.
[[nodiscard]] std::size_t displayWidth(std::u16string_view text);

/// Returns: the text, or its beginning and end with dots between where it is wider than `columns`.
[[nodiscard]] std::u16string shortened(std::u16string_view text, std::size_t columns);

/// Returns: the text in lines that are not wider than `columns`, broken behind a space where one
///          stands in the second half of a line; at least one line.
/// Requires: room for two columns.
[[nodiscard]] std::vector<std::u16string> broken(std::u16string_view text, std::size_t columns);

}  // namespace depcompare
