#include <fl/i18n/date_time.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <stdexcept>

#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time.hpp>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SANITIZED
#endif
#endif

namespace {

// Which of all allocations fail, from the first on, which has the number 0.
struct Failing {
    std::size_t from;
    std::size_t to;
} failing{};
std::size_t allocations = 0;
bool isCounting = false;

}  // namespace

#ifndef SANITIZED
static bool fails() {
    const std::size_t number = isCounting ? allocations++ : failing.to;
    return number >= failing.from && number < failing.to;
}

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) noexcept {
    return fails() ? nullptr : __libc_malloc(size);
}
void* realloc(void* memory, std::size_t size) noexcept {
    return fails() ? nullptr : __libc_realloc(memory, size);
}
}
#endif

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

// In a process of its own, since ICU keeps what it has read. Returns: its answer.
enum Answer { right, refused, wrong, wrongAfterwards, undisturbed };
int answerIfFailing(Failing numbers) {
    const pid_t child = ::fork();
    if (child == 0) {
        const auto time = boost::posix_time::time_from_string("2026-01-02 23:04:05");
        const Locale locale("de");
        const auto isRight = [&] {
            return date_time::to_ustring(time, DateFormat::medium, locale) ==
                   u"02.01.2026, 23:04:05";
        };
        int answer = refused;
        failing = numbers;
        isCounting = true;
        try {
            answer = isRight() ? right : wrong;
        } catch (const std::bad_alloc&) {
        }
        isCounting = false;
        if (allocations <= numbers.from) {
            answer = undisturbed;
        } else if (!isRight()) {
            answer = wrongAfterwards;
        }
        ::_exit(answer);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(DateTime, isNeverWrongForWantOfMemory) {
#ifdef SANITIZED
    GTEST_SKIP() << "sanitizers allocate by themselves";
#endif
    for (const bool alone : {true, false}) {
        int answer = right;
        for (std::size_t number = 0; answer != undisturbed; number += alone ? 1 : 7) {
            answer = answerIfFailing({number, alone ? number + 1 : SIZE_MAX});
            EXPECT_TRUE(answer == right || answer == refused || answer == undisturbed)
                << answer << " " << number << (alone ? " alone" : " with all that follow");
        }
    }
}

}  // namespace
}  // namespace fl::i18n
