#pragma once
// Text of graphs in HTML, outside of scripts.
#include <string>
#include <string_view>

namespace depcompare {

/// Returns: UTF-8 for the content of an element or a quoted attribute that no browser takes for
///          markup; see `visible`. Very long text is shortened, with a note.
[[nodiscard]] std::string htmlText(std::u16string_view text);
[[nodiscard]] std::string htmlText(std::string_view utf8);

}  // namespace depcompare
