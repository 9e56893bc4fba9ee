#pragma once
// Text of graphs as a terminal or a log may get it: nothing that steers it, nothing that cannot be
// seen.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace depcompare {

/// Returns: whether the character cannot be seen, or changes how the text around it is shown.
[[nodiscard]] bool isUnsafe(char32_t character);

/// Returns: the text with unsafe characters written as escapes (\n, \x1b, \u202e, \u{e0041}): controls,
///          line separators, format characters and others that displays ignore, and variation
///          selectors after anything but emoji and Han characters; likewise the second # of ##[...] and
///          ##name[...], which CI systems obey. The page has the same rules.
[[nodiscard]] std::u16string visible(std::u16string_view text);
[[nodiscard]] std::string visible(std::string_view utf8);

/// Returns: the line, in which a command at its beginning (::warning), which CI systems obey, is
///          escaped.
[[nodiscard]] std::u16string withoutCommand(std::u16string line);

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
