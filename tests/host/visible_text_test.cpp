#include "output/visible_text.h"

#include <gtest/gtest.h>

namespace depcompare {
namespace {

TEST(Visible, nothingThatSteersATerminalGetsThrough) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\new", "C:\\new"},
        {"a\nb\tc\rd", "a\\nb\\tc\\rd"},
        {"\x1b[31mred\x07\x7f", "\\x1b[31mred\\x07\\x7f"},
        {"\u009b31m", "\\x9b31m"},
        // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is tested.
        {"cc.\u202egnp", "cc.\\u202egnp"},
        {"\u2066x\u2069\u200f\u061c\u2028\ufeff", "\\u2066x\\u2069\\u200f\\u061c\\u2028\\ufeff"},
        {"\u00e4 \u65e5\u672c \U0001f600", "\u00e4 \u65e5\u672c \U0001f600"},
        {"\xff", "\ufffd"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(visible(std::string_view(text)), expected);
    }
}

TEST(Shortened, longTextsLoseTheirMiddleAndNoHalfCharacters) {
    struct Case {
        const char16_t* text;
        std::size_t columns;
        const char16_t* expected;
    };
    const Case cases[] = {
        {u"src/a.cc", 8, u"src/a.cc"},
        {u"src/module/file.cc", 15, u"src/.../file.cc"},
        {u"src/module/file.cc", 2, u"..."},
        {u"\U0001F600\U0001F600\U0001F600\U0001F600\U0001F600", 9,
         u"\U0001F600...\U0001F600\U0001F600"},
        {u"\u65E5\u672C\u65E5\u672C\u65E5", 9, u"\u65E5...\u672C\u65E5"},
        {u"aaaaaaaaaae\u0301e\u0301", 6, u"a...e\u0301e\u0301"},
    };
    for (const Case& example : cases) {
        EXPECT_EQ(shortened(example.text, example.columns), example.expected);
        EXPECT_LE(displayWidth(shortened(example.text, example.columns)),
                  std::max<std::size_t>(example.columns, 3));
    }
}

}  // namespace
}  // namespace depcompare
