#include "output/visible_text.h"

#include <algorithm>
#include <iterator>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

namespace depcompare {

namespace {

struct Range {
    char16_t first;
    char16_t last;
};

constexpr Range unsafe[] = {{0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C}, {0x200E, 0x200F},
                            {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};

// East Asian characters, and the first halves of all that lies beyond 16 bits.
constexpr Range wide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3}, {0xD800, 0xDBFF},
                          {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}};

constexpr Range widthless[] = {
    {0x0300, 0x036F}, {0x200B, 0x200D}, {0xDC00, 0xDFFF}, {0xFE00, 0xFE0F}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char16_t unit) {
    return std::ranges::any_of(
        ranges, [&](const Range& range) { return range.first <= unit && unit <= range.last; });
}

bool isUnsafe(char16_t unit) {
    return isIn(unsafe, unit);
}

std::string escaped(char16_t unit) {
    switch (unit) {
        case u'\n':
            return "\\n";
        case u'\r':
            return "\\r";
        case u'\t':
            return "\\t";
        default:
            return unit < 0x100 ? fmt::format("\\x{:02x}", static_cast<unsigned>(unit))
                                : fmt::format("\\u{:04x}", static_cast<unsigned>(unit));
    }
}

std::size_t widthOf(char16_t unit) {
    if (unit < 0x0300) {
        return 1;
    }
    return isIn(widthless, unit) ? 0 : isIn(wide, unit) ? 2 : 1;
}

/// Returns: how many units from the front fit, not ending before a character's second half or mark.
template <class Iterator>
std::ptrdiff_t fitting(Iterator begin, Iterator end, std::size_t columns) {
    auto unit = begin;
    for (; unit != end && widthOf(*unit) <= columns; ++unit) {
        columns -= widthOf(*unit);
    }
    return std::distance(begin, unit);
}

}  // namespace

std::u16string visible(std::u16string_view text) {
    std::u16string shown;
    shown.reserve(text.size());
    for (const char16_t unit : text) {
        if (isUnsafe(unit)) {
            std::ranges::copy(escaped(unit), std::back_inserter(shown));
        } else {
            shown += unit;
        }
    }
    return shown;
}

std::string visible(std::string_view utf8) {
    return fl::i18n::ustring_to_utf8(visible(fl::i18n::utf8_to_ustring(utf8)));
}

std::size_t displayWidth(std::u16string_view text) {
    std::size_t width = 0;
    for (const char16_t unit : text) {
        width += widthOf(unit);
    }
    return width;
}

std::u16string shortened(std::u16string_view text, std::size_t columns) {
    constexpr std::u16string_view dots = u"...";
    if (displayWidth(text) <= columns) {
        return std::u16string(text);
    }
    // The end of a path says more than its beginning.
    const std::size_t forText = columns - std::min(columns, dots.size());
    const auto head = fitting(text.begin(), text.end(), forText / 3);
    auto tail = fitting(text.rbegin(), text.rend(), forText - forText / 3);
    while (tail > 0 && widthOf(text[text.size() - static_cast<std::size_t>(tail)]) == 0) {
        --tail;
    }
    std::u16string shown(text.substr(0, static_cast<std::size_t>(head)));
    return shown.append(dots).append(text.substr(text.size() - static_cast<std::size_t>(tail)));
}

std::vector<std::u16string> broken(std::u16string_view text, std::size_t columns) {
    std::vector<std::u16string> lines;
    while (displayWidth(text) > columns) {
        auto count = static_cast<std::size_t>(fitting(text.begin(), text.end(), columns));
        const std::size_t space = text.substr(0, count).rfind(u' ');
        if (space != text.npos && space >= count / 2) {
            count = space + 1;
        }
        // A character wider than the room stands alone.
        count = std::max<std::size_t>(count, 1);
        while (count < text.size() && widthOf(text[count]) == 0) {
            ++count;
        }
        lines.emplace_back(text.substr(0, count));
        text.remove_prefix(count);
    }
    lines.emplace_back(text);
    return lines;
}

}  // namespace depcompare
