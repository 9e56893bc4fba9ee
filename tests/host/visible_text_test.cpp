#include "output/visible_text.h"

#include <tuple>

#include <fl/i18n/ustring.h>
#include <gtest/gtest.h>

namespace depcompare {
namespace {

using fl::i18n::ustring_to_utf8;

TEST(Visible, nothingUnsafeGetsThrough) {
    const std::pair<std::u16string, const char*> cases[] = {
        {u"C:\\new \u00e4 \u65e5\u672c \U0001f600\ufe0f",
         "C:\\new \u00e4 \u65e5\u672c \U0001f600\ufe0f"},
        {u"\u2764\ufe0f \u845b\U000e0100 b\ufe0f\u2764\ufe0f\ufe0f \u845b\ufe0f\U000e0100",
         "\u2764\ufe0f \u845b\U000e0100 b\\ufe0f\u2764\ufe0f\\ufe0f \u845b\\ufe0f\\u{e0100}"},
        {u"##[error]x ##vso[task] ###[x ##x #[ ##",
         "#\\x23[error]x #\\x23vso[task] ##\\x23[x ##x #[ ##"},
        {u"a\nb\tc\rd", "a\\nb\\tc\\rd"},
        {u"\x1b[31mred\x07\x7f\u009b", "\\x1b[31mred\\x07\\x7f\\x9b"},
        // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is tested.
        {u"\u202e\u2066\u2069\u200f\u061c\u2028", "\\u202e\\u2066\\u2069\\u200f\\u061c\\u2028"},
        {u"a\u200b\u200d\u00ad\u2060\u180e\ufeff\u3164\u2800\u0600",
         "a\\u200b\\u200d\\xad\\u2060\\u180e\\ufeff\\u3164\\u2800\\u0600"},
        {u"\U000e0041\U000e0fff", "\\u{e0041}\\u{e0fff}"},
        {u"\xdb40 \xdc41", "\ufffd \ufffd"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(ustring_to_utf8(visible(text)), expected);
    }
}

TEST(Shortened, longTextsLoseTheirMiddleAndNoHalfCharacters) {
    using enum Measure;
    const std::tuple<std::u16string, std::size_t, Measure, std::string> cases[] = {
        {u"src/a.cc", 8, columns, "src/a.cc"},
        {u"src/module/file.cc", 15, columns, "src/.../file.cc"},
        {u"src/module/file.cc", 2, columns, "..."},
        {u"abcdee\u0301", 2, columns, "..."},
        {u"\U0001F600\U0001F600\U0001F600\U0001F600\U0001F600", 9, columns,
         "\U0001F600...\U0001F600\U0001F600"},
        {u"\u65E5\u672C\u65E5\u672C\u65E5", 9, columns, "\u65E5...\u672C\u65E5"},
        {u"aaaaaaaaaae\u0301e\u0301", 6, columns, "a...e\u0301e\u0301"},
        {u"aaaaaaaae\u0301bcd", 7, columns, "a...bcd"},
        {u"\u65E5\u672C\u65E5", 3, units, "\u65E5\u672C\u65E5"},
        {u"a\U0001F600bcdefghi\U0001F600jkl", 9, units, "a...jkl"},
        {std::u16string(50, u'\u0301'), 9, units, "..."},
    };
    for (const auto& [text, most, measure, expected] : cases) {
        EXPECT_EQ(ustring_to_utf8(shortened(text, most, measure)), expected);
    }
}

TEST(Broken, textIsBrokenAfterSpacesAndNeverInsideACharacter) {
    const std::tuple<std::u16string, std::vector<std::u16string>> cases[] = {
        {u"abcdefgh", {u"abcdef", u"gh"}},
        {u"abcd efgh", {u"abcd ", u"efgh"}},
        {u"a bcdefgh", {u"a bcde", u"fgh"}},
        {u"\u3042\u3044\u3046\u3048", {u"\u3042\u3044\u3046", u"\u3048"}},
        {u"abcde\U0001F600f", {u"abcde", u"\U0001F600f"}},
        {u"abcdee\u0301f", {u"abcdee\u0301", u"f"}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(broken(text, 6), expected);
    }
    EXPECT_EQ(broken(u"\u65E5\u672C", 1), (std::vector<std::u16string>{u"\u65E5", u"\u672C"}));
}

}  // namespace
}  // namespace depcompare
