#include <fl/i18n/date_time.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace fl::i18n {
namespace {

using boost::posix_time::ptime;

ptime at(int year, int month, int day, int hours, int minutes, int seconds) {
    return {boost::gregorian::date(static_cast<unsigned short>(year),
                                   static_cast<unsigned short>(month),
                                   static_cast<unsigned short>(day)),
            boost::posix_time::time_duration(hours, minutes, seconds)};
}

// Releases of ICU differ in which space stands before AM and PM.
std::string shown(const ptime& time, DateFormat format, const char* locale) {
    ustring text = date_time::to_ustring(time, format, Locale(locale));
    std::replace(text.begin(), text.end(), u'\u202f', u' ');
    return ustring_to_utf8(text);
}

TEST(DateTime, mediumStyleOfEachLanguageIsInUtcWhateverTheEnvironmentSays) {
    setenv("TZ", "Asia/Tokyo", 1);
    setenv("LANG", "fr_FR.UTF-8", 1);
    const ptime time = at(2026, 1, 2, 23, 4, 5);
    const std::pair<const char*, const char*> cases[] = {
        {"en", "Jan 2, 2026, 11:04:05 PM"}, {"de_DE", "02.01.2026, 23:04:05"},
        {"ja", "2026/01/02 23:04:05"},      {"tr", "2 Oca 2026 23:04:05"},
        {"xx", "Jan 2, 2026, 11:04:05 PM"},
    };
    for (const auto& [locale, expected] : cases) {
        EXPECT_EQ(shown(time, DateFormat::medium, locale), expected) << locale;
    }
    EXPECT_EQ(shown(at(1969, 12, 31, 23, 59, 59), DateFormat::medium, "de"),
              "31.12.1969, 23:59:59");
}

TEST(DateTime, theStylesGrowShorterWithTheirNumbers) {
    const ptime time = at(2026, 1, 2, 3, 4, 5);
    EXPECT_EQ(shown(time, DateFormat{1}, "de"), "2. Januar 2026 um 03:04:05 UTC");
    EXPECT_EQ(shown(time, DateFormat{2}, "de"), "02.01.2026, 03:04:05");
    EXPECT_EQ(shown(time, DateFormat{3}, "de"), "02.01.26, 03:04");
    EXPECT_THROW((void)date_time::to_ustring(time, DateFormat{4}), std::invalid_argument);
}

}  // namespace
}  // namespace fl::i18n
