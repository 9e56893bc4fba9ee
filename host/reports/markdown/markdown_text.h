#pragma once
// Text of graphs in Markdown.
#include <string>
#include <string_view>

namespace depcompare {

/// Returns: a code span in UTF-8, in which nothing is markup, a mention or a link, and that stays on
///          its line; see `visible`. Very long text is cut.
[[nodiscard]] std::string markdownCode(std::u16string_view text);

}  // namespace depcompare
