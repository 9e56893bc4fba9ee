#include <fl/i18n/locale.h>

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace fl::i18n {
namespace {

TEST(Locale, namesAreReadInTheFormsThatEnvironmentsAndPeopleWrite) {
    const std::string_view cases[][3] = {
        {"en", "en", "en"},
        {"de_DE", "de_DE", "de"},
        {"TR", "tr", "tr"},
        {"de_DE.ISO-8859-15@euro", "de_DE", "de"},
        {"sr_RS@latin", "sr_Latn_RS", "sr"},
        {"zh-hant-tw", "zh_Hant_TW", "zh"},
        {"fil_PH", "fil_PH", "fil"},
        {"es-419", "es_419", "es"},
        {"C", "en", "en"},
        {"", "en", "en"},
    };
    for (const auto& [given, name, language] : cases) {
        const Locale locale(given);
        EXPECT_EQ(locale.name(), name) << given;
        EXPECT_EQ(locale.language(), language) << given;
        EXPECT_EQ(locale, Locale(name)) << given;
    }
    EXPECT_EQ(Locale(), Locale("en"));
    EXPECT_FALSE(Locale("de") == Locale("de_DE"));
    for (const std::string_view name : {"english", "x", "d1", "de_", "_DE", "de__DE", "de_GERMANY",
                                        "de_DE_x", " de", "@latin", "../de"}) {
        EXPECT_THROW((void)Locale(name), InvalidLocaleName) << name;
    }
}

TEST(Locale, globalLocaleIsReadWholeWhileItIsSetAndOthersAreMade) {
    std::atomic<bool> stop = false;
    std::atomic<int> torn = 0;
    std::vector<std::jthread> readers;
    readers.reserve(3);
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&, i] {
            for (char c = 'a'; !stop; c = c == 'z' ? 'a' : static_cast<char>(c + 1)) {
                const Locale made(std::string{'x', static_cast<char>('a' + i), c});
                const Locale locale = Locale::global();
                const bool whole = locale.name() == "en" ||
                                   (locale.name() == "tr_TR" && !locale.lowersAsciiPlainly());
                torn += whole && made.name()[2] == c ? 0 : 1;
            }
        });
    }
    for (int i = 0; i < 2000; ++i) {
        Locale::setGlobal(i % 2 == 0 ? Locale("tr_TR") : Locale("en"));
    }
    stop = true;
    readers.clear();
    EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace fl::i18n
