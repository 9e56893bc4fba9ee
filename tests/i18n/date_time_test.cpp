#include <fl/i18n/date_time.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time.hpp>

namespace fl::i18n {
namespace {

// Releases of ICU differ in which space is before AM and PM.
std::string shown(const char* time, int format, const char* locale) {
    ustring text = date_time::to_ustring(boost::posix_time::time_from_string(time),
                                         DateFormat{format}, Locale(locale));
    std::replace(text.begin(), text.end(), u'\u202f', u' ');
    return ustring_to_utf8(text);
}

TEST(DateTime, isInTheStyleOfTheLanguageInUtcWhateverTheEnvironmentSays) {
    setenv("TZ", "Asia/Tokyo", 1);
    setenv("LANG", "fr_FR.UTF-8", 1);
    const struct {
        const char* time;
        int format;
        const char* locale;
        const char* expected;
    } cases[] = {
        {"2026-01-02 23:04:05", 2, "en", "Jan 2, 2026, 11:04:05 PM"},
        {"2026-01-02 23:04:05", 2, "de_DE", "02.01.2026, 23:04:05"},
        {"2026-01-02 23:04:05", 2, "ja", "2026/01/02 23:04:05"},
        {"2026-01-02 23:04:05", 2, "tr", "2 Oca 2026 23:04:05"},
        {"2026-01-02 23:04:05", 2, "xx", "Jan 2, 2026, 11:04:05 PM"},
        {"2026-01-02 23:04:05", 1, "de", "2. Januar 2026 um 23:04:05 UTC"},
        {"2026-01-02 23:04:05", 3, "de", "02.01.26, 23:04"},
        // Thai dates count years otherwise by default.
        {"2026-01-02 23:04:05", 2, "th", "2 ม.ค. 2026 23:04:05"},
        {"1500-02-28 00:00:00", 2, "de", "28.02.1500, 00:00:00"},
        {"1400-01-01 00:00:00", 2, "de", "01.01.1400, 00:00:00"},
        // A second lasts until the next one begins, also before 1970.
        {"2026-01-02 23:04:05.999999", 2, "de", "02.01.2026, 23:04:05"},
        {"1969-12-31 23:59:59.999999", 2, "de", "31.12.1969, 23:59:59"},
    };
    for (const auto& [time, format, locale, expected] : cases) {
        EXPECT_EQ(shown(time, format, locale), expected) << time << ' ' << locale;
    }
    EXPECT_THROW(shown("2026-01-02 23:04:05", 4, "de"), std::invalid_argument);
    EXPECT_EQ(date_time::to_ustring({}, DateFormat::medium), u"");
}

}  // namespace
}  // namespace fl::i18n
