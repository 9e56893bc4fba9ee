#include "reports/page/html_text.h"

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

constexpr std::size_t longestText = 400;

bool isSecondHalf(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::string escaped(std::string_view utf8) {
    std::string html;
    html.reserve(utf8.size());
    for (const char letter : utf8) {
        switch (letter) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\'':
                html += "&#39;";
                break;
            default:
                html += letter;
        }
    }
    return html;
}

}  // namespace

std::string htmlText(std::u16string_view text) {
    if (text.size() <= longestText) {
        return escaped(fl::i18n::ustring_to_utf8(visible(text)));
    }
    std::size_t length = longestText;
    while (isSecondHalf(text[length])) {
        --length;
    }
    return fmt::format("{}\u2026 ({} characters)", htmlText(text.substr(0, length)), text.size());
}

std::string htmlText(std::string_view utf8) {
    return htmlText(fl::i18n::utf8_to_ustring(utf8));
}

}  // namespace depcompare
