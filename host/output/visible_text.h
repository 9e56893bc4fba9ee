#pragma once
// Text of graphs as a terminal may get it: nothing that steers it, nothing that cannot be seen.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace depcompare {

/// Returns: the text with unsafe characters written as escapes (\n, \x1b, \u202e, \u{e0041}); see
///          `unsafe_characters.def`.
[[nodiscard]] std::u16string visible(std::u16string_view text);
[[nodiscard]] std::string visible(std::string_view utf8);

/// Returns: how many columns of a terminal the text takes, approximately.
[[nodiscard]] std::size_t displayWidth(std::u16string_view text);

/// What the length of a text is counted in: columns of a terminal, or UTF-16 units.
enum class Measure : std::uint8_t { columns, units };

/// Returns: the text; one that is longer than `most` loses its middle, and gets three dots instead.
///          No character is cut, nor parted from its marks.
[[nodiscard]] std::u16string shortened(std::u16string_view text, std::size_t most,
                                       Measure measure = Measure::columns);

/// Returns: the text in lines that are not wider than `columns`, broken after a space if there is one
///          in the second half of a line; at least one line.
/// Requires: room for two columns.
[[nodiscard]] std::vector<std::u16string> broken(std::u16string_view text, std::size_t columns);

}  // namespace depcompare
