#include "reports/markdown/markdown_text.h"

#include <algorithm>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

constexpr std::size_t longestText = 200;

std::size_t longestFence(std::string_view text) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (const char letter : text) {
        run = letter == '`' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

bool isSecondHalf(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::u16string cut(std::u16string text) {
    if (text.size() <= longestText) {
        return text;
    }
    // The end of a path says more than its beginning.
    std::size_t head = longestText / 3;
    std::size_t tail = text.size() - (longestText - head);
    head -= isSecondHalf(text[head]) ? 1U : 0U;
    tail += isSecondHalf(text[tail]) ? 1U : 0U;
    return text.substr(0, head) + u"..." + text.substr(tail);
}

}  // namespace

std::string markdownCode(std::u16string_view text) {
    if (text.empty()) {
        return "_empty_";
    }
    const std::string shown = fl::i18n::ustring_to_utf8(cut(visible(text)));
    const std::string fence(longestFence(shown) + 1, '`');
    // A span that is nothing but spaces stands as it is; others lose one at each end, if both have one.
    const bool padded = shown.front() == '`' || shown.back() == '`' ||
                        (shown.front() == ' ' && shown.back() == ' ');
    const std::string_view space = padded ? " " : "";
    return fmt::format("{0}{1}{2}{1}{0}", fence, space, shown);
}

}  // namespace depcompare
