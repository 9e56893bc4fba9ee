#include "reports/page/html_text.h"

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

constexpr std::size_t longestText = 400;

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
    const std::u16string shown = shortened(text, longestText, Measure::units);
    const std::string html = escaped(fl::i18n::ustring_to_utf8(visible(shown)));
    return shown.size() == text.size() ? html
                                       : fmt::format("{} ({} characters)", html, text.size());
}

std::string htmlText(std::string_view utf8) {
    return htmlText(fl::i18n::utf8_to_ustring(utf8));
}

}  // namespace depcompare
