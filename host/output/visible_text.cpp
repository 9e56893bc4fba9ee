#include "output/visible_text.h"

#include <algorithm>
#include <iterator>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <unicode/uchar.h>

namespace depcompare {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// East Asian characters, and the first halves of all characters beyond 16 bits.
constexpr Range wide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3}, {0xD800, 0xDBFF},
                          {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}};

constexpr Range widthless[] = {{0x0300, 0x036F}, {0xDC00, 0xDFFF}, {0xFE00, 0xFE0F}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t character) {
    return std::ranges::any_of(ranges, [&](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

bool isFirstHalf(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isSecondHalf(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Requires: a text that is not empty.
char32_t firstOf(std::u16string_view text) {
    if (text.size() > 1 && isFirstHalf(text[0]) && isSecondHalf(text[1])) {
        return 0x10000U + ((text[0] - 0xD800U) << 10U) + (text[1] - 0xDC00U);
    }
    return text[0];
}

bool has(char32_t character, UProperty property) {
    return u_hasBinaryProperty(static_cast<UChar32>(character), property) != 0;
}

/// Returns: whether the selector chooses a form of the character before it, as of emoji and Han
///          characters; anywhere else it cannot be seen.
bool selectsForm(char32_t selector, char32_t before) {
    if (selector == 0xFE0E || selector == 0xFE0F) {
        return before > 0x7F && has(before, UCHAR_EMOJI);
    }
    constexpr Range ofHan[] = {{0xFE00, 0xFE02}, {0xE0100, 0xE01EF}};
    return isIn(ofHan, selector) && has(before, UCHAR_IDEOGRAPHIC);
}

/// Returns: whether CI systems obey what begins with ## and this, wherever in a line: ##[error].
bool isCommand(std::u16string_view afterHashes) {
    const auto isLetter = [](char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
    };
    const auto bracket = std::ranges::find_if_not(afterHashes, isLetter);
    return bracket != afterHashes.end() && *bracket == u'[';
}

std::string escaped(char32_t character) {
    const auto number = static_cast<unsigned>(character);
    switch (character) {
        case U'\n':
            return "\\n";
        case U'\r':
            return "\\r";
        case U'\t':
            return "\\t";
        default:
            return number < 0x100     ? fmt::format("\\x{:02x}", number)
                   : number < 0x10000 ? fmt::format("\\u{:04x}", number)
                                      : fmt::format("\\u{{{:x}}}", number);
    }
}

std::size_t widthOf(char16_t unit) {
    if (unit < 0x0300) {
        return 1;
    }
    return isIn(widthless, unit) ? 0 : isIn(wide, unit) ? 2 : 1;
}

std::size_t lengthOf(char16_t unit, Measure measure) {
    return measure == Measure::units ? 1 : widthOf(unit);
}

/// Returns: how many units fit from `begin` on.
template <class Iterator>
std::size_t fitting(Iterator begin, Iterator end, std::size_t most, Measure measure) {
    auto unit = begin;
    for (; unit != end && lengthOf(*unit, measure) <= most; ++unit) {
        most -= lengthOf(*unit, measure);
    }
    return static_cast<std::size_t>(std::distance(begin, unit));
}

}  // namespace

bool isUnsafe(char32_t character) {
    constexpr char32_t blankBraille = 0x2800;
    switch (u_charType(static_cast<UChar32>(character))) {
        case U_CONTROL_CHAR:
        case U_FORMAT_CHAR:
        case U_LINE_SEPARATOR:
        case U_PARAGRAPH_SEPARATOR:
            return true;
        default:
            return character == blankBraille || has(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
    }
}

std::u16string visible(std::u16string_view text) {
    std::u16string shown;
    shown.reserve(text.size());
    for (char32_t before = 0; !text.empty();) {
        const char32_t character = firstOf(text);
        const std::size_t units = character < 0x10000 ? 1 : 2;
        const bool isPlain = character >= 0x20 && character < 0x7F;
        const bool isSafe = isPlain
                                ? character != U'#' || before != U'#' || !isCommand(text.substr(1))
                                : !isUnsafe(character) || selectsForm(character, before);
        if (isSafe) {
            shown.append(text.substr(0, units));
        } else {
            std::ranges::copy(escaped(character), std::back_inserter(shown));
        }
        text.remove_prefix(units);
        before = character;
    }
    return shown;
}

std::string visible(std::string_view utf8) {
    return fl::i18n::ustring_to_utf8(visible(fl::i18n::utf8_to_ustring(utf8)));
}

std::u16string withoutCommand(std::u16string line) {
    const auto begin =
        std::ranges::find_if_not(line, [](char16_t unit) { return u_isUWhiteSpace(unit) != 0; });
    const auto index = static_cast<std::size_t>(begin - line.begin());
    if (std::u16string_view(line).substr(index).starts_with(u"::")) {
        line.replace(index, 1, u"\\x3a");
    }
    return line;
}

std::size_t displayWidth(std::u16string_view text) {
    std::size_t width = 0;
    for (const char16_t unit : text) {
        width += widthOf(unit);
    }
    return width;
}

std::u16string shortened(std::u16string_view text, std::size_t most, Measure measure) {
    constexpr std::u16string_view dots = u"...";
    const bool fits = measure == Measure::units ? text.size() <= most : displayWidth(text) <= most;
    if (fits) {
        return std::u16string(text);
    }
    // The end of a path says more than its beginning.
    const std::size_t forText = most - std::min(most, dots.size());
    std::size_t head = fitting(text.begin(), text.end(), forText / 3, measure);
    std::size_t tail = fitting(text.rbegin(), text.rend(), forText - forText / 3, measure);
    while (head > 0 && widthOf(text[head]) == 0) {
        --head;
    }
    while (tail > 0 && widthOf(text[text.size() - tail]) == 0) {
        --tail;
    }
    std::u16string shown(text.substr(0, head));
    return shown.append(dots).append(text.substr(text.size() - tail));
}

std::vector<std::u16string> broken(std::u16string_view text, std::size_t columns) {
    std::vector<std::u16string> lines;
    for (;;) {
        std::size_t count = fitting(text.begin(), text.end(), columns, Measure::columns);
        if (count == text.size()) {
            break;
        }
        const std::size_t space = text.substr(0, count).rfind(u' ');
        if (space != text.npos && space >= count / 2) {
            count = space + 1;
        }
        // A character that is wider than the room gets a line of its own.
        count = std::max<std::size_t>(count, 1);
        while (count < text.size() && widthOf(text[count]) == 0) {
            ++count;
        }
        lines.emplace_back(text.substr(0, count));
        text.remove_prefix(count);
    }
    if (!text.empty() || lines.empty()) {
        lines.emplace_back(text);
    }
    return lines;
}

}  // namespace depcompare
