#include "reports/text/row_layout.h"

#include <fl/i18n/ustring.h>
#include <gtest/gtest.h>

#include "output/visible_text.h"

namespace depcompare {
namespace {

using fl::i18n::ustring_to_utf8;
using Texts = std::vector<std::string>;

Texts texts(const std::vector<std::u16string>& lines) {
    Texts texts;
    for (const auto& line : lines) {
        texts.push_back(ustring_to_utf8(line));
    }
    return texts;
}

TextCell same(std::u16string text) {
    return {.before = std::move(text), .after = {}};
}

TextCell changed(std::u16string before, std::u16string after) {
    return {.before = std::move(before), .after = std::move(after), .changed = true};
}

TextRow row(std::u16string caption, TextCell name, TextCell value) {
    TextRow made;
    made.caption = std::move(caption);
    made.name = std::move(name);
    made.value = std::move(value);
    return made;
}

TEST(RowLayout, aRowFitsOrContinuesBelowOrIsShortened) {
    const std::u16string long1 = u"0123456789abcdefghijklmnopqrstuvwxyz";
    const std::u16string long2 = u"9876543210abcdefghijklmnopqrstuvwxyz";
    const RowLayout beside{.separator = u" -> ", .columns = 36, .captionColumns = 4};
    const RowLayout below{.separator = u"  ", .columns = 36, .nameColumns = 5};
    RowLayout shortening = below;
    shortening.shortens = true;
    struct Case {
        TextRow row;
        const RowLayout& layout;
        Texts expected;
    };
    const TextCell none;
    const Case cases[] = {
        {row(u"use", same(u"f"), same(u"g")), beside, {"use   f -> g"}},
        {row(u"", changed(u"f", u"h"), none), beside, {"      f → h"}},
        {row(u"", same(u"k"), changed(long1, long2)),
         below,
         {"k      0123456789abcdefghijklmnopqrs", "       tuvwxyz",
          "       → 9876543210abcdefghijklmnopq", "       rstuvwxyz"}},
        {row(u"", same(u"k"), changed(long1, long2)),
         shortening,
         {"k      012...tuvwxyz → 987...tuvwxyz"}},
        {row(u"", same(u"k"), same(long1)), shortening, {"k      01234567...ijklmnopqrstuvwxyz"}},
        // Shortened, both sides would look alike.
        {row(u"", same(u"k"), changed(u"0123456789ABCDEFGHijklmnopqrstuvwxyz", long1)),
         shortening,
         {"k      0123456789ABCDEFGHijklmnopqrs", "       tuvwxyz",
          "       → 0123456789abcdefghijklmnopq", "       rstuvwxyz"}},
        // A long name takes the line, its value goes below.
        {row(u"", same(u"a rather long name of something"), same(u"value")),
         below,
         {"a rather long name of something", "  value"}},
    };
    for (const Case& example : cases) {
        EXPECT_EQ(texts(linesOf(example.row, example.layout)), example.expected);
    }
}

TEST(Broken, textIsBrokenBehindSpacesAndNeverInsideACharacter) {
    const std::pair<std::u16string, Texts> cases[] = {
        {u"abcdefgh", {"abcdef", "gh"}},
        {u"abcd efgh", {"abcd ", "efgh"}},
        {u"a bcdefgh", {"a bcde", "fgh"}},
        {u"\u3042\u3044\u3046\u3048", {"\u3042\u3044\u3046", "\u3048"}},
        {u"abcde\U0001F600f", {"abcde", "\U0001F600f"}},
        {u"abcdee\u0301f", {"abcdee\u0301", "f"}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(texts(broken(text, 6)), expected);
    }
}

}  // namespace
}  // namespace depcompare
