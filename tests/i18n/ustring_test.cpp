#include <fl/i18n/ustring.h>

#include <tuple>

#include <gtest/gtest.h>

namespace fl::i18n {
namespace {

TEST(Conversions, textComesBackAsItWas) {
    const ustring texts[] = {u"", u"a\u0080\u07ff\u0800\uffff", u"\U0001f600 and \U0010ffff",
                             ustring(1, u'\0') + u"after nul"};
    for (const ustring& text : texts) {
        EXPECT_EQ(utf8_to_ustring(ustring_to_utf8(text)), text) << ustring_to_utf8(text);
        EXPECT_EQ(to_string(text), ustring_to_utf8(text));
    }
    EXPECT_EQ(ustring_to_utf8(u"é\u20ac\U0001f600"), "\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
}

TEST(Conversions, malformedTextBecomesOneReplacementCharacterPerSequence) {
    constexpr char16_t high = 0xd83d;
    constexpr char16_t low = 0xde00;
    EXPECT_EQ(ustring_to_utf8(ustring{u'a', high, u'-'}), "a\xef\xbf\xbd-");
    EXPECT_EQ(ustring_to_utf8(ustring{low, high}), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(ustring_to_utf8(ustring{high, low, low}), "\xf0\x9f\x98\x80\xef\xbf\xbd");
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"a\xff z", u"a\ufffd z"},
        {"\xe2\x82", u"\ufffd"},                            // cut off after two of three
        {"\xe2\x82\x62", u"\ufffdb"},                       // what follows is not swallowed
        {"\xed\xa0\x80", u"\ufffd\ufffd\ufffd"},            // an encoded surrogate
        {"\xf4\x90\x80\x80", u"\ufffd\ufffd\ufffd\ufffd"},  // above U+10FFFF
    };
    for (const auto& [bytes, expected] : cases) {
        EXPECT_EQ(utf8_to_ustring(bytes), expected);
    }
}

TEST(ToLower, followsTheRulesOfTheLocale) {
    const std::tuple<const char*, const char16_t*, const char16_t*> cases[] = {
        {"en", u"SRC/Build_[@`{Z9].CC", u"src/build_[@`{z9].cc"},
        {"en", u"\u0130I", u"i\u0307i"},
        {"tr", u"ISTANBUL", u"\u0131stanbul"},
        {"tr", u"\u0130STANBUL", u"istanbul"},
        {"tr_TR", u"I\u0307", u"i"},
        {"de", u"STRA\u1e9eE Stra\u00dfe", u"stra\u00dfe stra\u00dfe"},
        {"el", u"\u039f\u0394\u039f\u03a3", u"\u03bf\u03b4\u03bf\u03c2"},  // final sigma
        {"el", u"\u03a3\u0391", u"\u03c3\u03b1"},                          // not final
        {"lt", u"\u00cc", u"i\u0307\u0300"},                               // keeps its dot
        {"en", u"\U00010400", u"\U00010428"},                              // a pair
        {"en", u"\u0130\u0130\u0130\u0130\u0130\u0130\u0130\u0130",        // twice as long
         u"i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307"},
    };
    for (const auto& [locale, text, expected] : cases) {
        EXPECT_EQ(to_lower(text, Locale(locale)), expected)
            << locale << ' ' << ustring_to_utf8(text);
    }
}

// The fast path for ASCII and the rules of ICU must agree; a letter outside of ASCII forces the
// latter.
TEST(ToLower, asciiLowersAlikeAloneAndBesideOtherLetters) {
    ustring ascii;
    for (char16_t c = 0; c < 0x80; ++c) {
        ascii.push_back(c);
    }
    for (const char* name : {"en", "de", "lt", "tr"}) {
        const Locale locale(name);
        EXPECT_EQ(to_lower(ascii, locale) + u"\u00e9", to_lower(ascii + u"\u00c9", locale)) << name;
    }
}

}  // namespace
}  // namespace fl::i18n
