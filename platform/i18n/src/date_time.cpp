#include <fl/i18n/date_time.h>

#include <malloc.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/uclean.h>
#include <unicode/unistr.h>
#include <unicode/ures.h>
#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace fl::i18n::date_time {
namespace {

static_assert(static_cast<int>(DateFormat::full) == icu::DateFormat::kFull);
static_assert(static_cast<int>(DateFormat::long_) == icu::DateFormat::kLong);
static_assert(static_cast<int>(DateFormat::medium) == icu::DateFormat::kMedium);
static_assert(static_cast<int>(DateFormat::short_) == icu::DateFormat::kShort);

// ICU does not survive every allocation that fails, nor report each: it may leave out a number of a
// date, or take another pattern. So it gets memory from a reserve then, for good, and what was wanted
// of it fails afterwards.
alignas(std::max_align_t) std::array<std::byte, 1U << 20U> reserve;  // for several dates
std::atomic<std::size_t> reserved = 0;
thread_local bool ranOutOfMemory = false;

bool isReserved(const void* memory) noexcept {
    const std::less<> isBefore;
    const void* const begin = reserve.data();
    const void* const end = reserve.data() + reserve.size();
    return !isBefore(memory, begin) && isBefore(memory, end);
}

void* allocate(std::size_t size) noexcept {
    void* const memory = std::malloc(size);
    if (memory != nullptr) {
        return memory;
    }
    ranOutOfMemory = true;
    constexpr std::size_t unit = alignof(std::max_align_t);
    const std::size_t rounded = (size + unit - 1) / unit * unit;
    const std::size_t begin = reserved.fetch_add(rounded);
    return begin + rounded <= reserve.size() ? reserve.data() + begin : nullptr;
}

void release(void* memory) noexcept {
    if (!isReserved(memory)) {
        std::free(memory);
    }
}

void* reallocate(void* memory, std::size_t size) noexcept {
    void* const moved = allocate(size);
    if (memory != nullptr && moved != nullptr) {
        const std::size_t most = isReserved(memory)
                                     ? static_cast<std::size_t>(reserve.data() + reserve.size() -
                                                                static_cast<std::byte*>(memory))
                                     : ::malloc_usable_size(memory);
        std::memmove(moved, memory, std::min(most, size));
        release(memory);
    }
    return moved;
}

// Before any thread.
[[gnu::constructor]] void giveMemoryToIcu() noexcept {
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(
        nullptr, [](const void*, std::size_t size) { return allocate(size); },
        [](const void*, void* memory, std::size_t size) { return reallocate(memory, size); },
        [](const void*, void* memory) { release(memory); }, &status);
}

// The second in which `time` is, as milliseconds since the epoch.
UDate secondOf(const boost::posix_time::ptime& time) {
    const auto days = (time.date() - boost::gregorian::date(1970, 1, 1)).days();
    return 1000.0 * (86400.0 * static_cast<double>(days) +
                     static_cast<double>(time.time_of_day().total_seconds()));
}

// With the calendar of all parts of the system. For a language without data ICU takes the locale of
// the environment; here that is English.
icu::Locale icuLocale(const Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    ures_close(ures_open(nullptr, locale.name().c_str(), &status));
    const bool isKnown = U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING;
    return {((isKnown ? locale.name() : "en") + "@calendar=gregorian").c_str()};
}

// Gregorian from the first date of boost::gregorian on; ICU's own begins in 1582.
std::unique_ptr<icu::Calendar> makeCalendar(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    auto calendar = std::make_unique<icu::GregorianCalendar>(icu::TimeZone::createTimeZone("UTC"),
                                                             locale, status);
    if (calendar) {
        calendar->setGregorianChange(
            secondOf(boost::posix_time::ptime(boost::date_time::min_date_time)), status);
    }
    if (!calendar || U_FAILURE(status)) {
        throw std::bad_alloc();
    }
    return calendar;
}

std::unique_ptr<icu::DateFormat> makeFormat(DateFormat format, const Locale& locale) {
    if (format < DateFormat::full || format > DateFormat::short_) {
        throw std::invalid_argument("There is no date format " +
                                    std::to_string(static_cast<int>(format)) + ".");
    }
    const auto style = static_cast<icu::DateFormat::EStyle>(format);
    const icu::Locale known = icuLocale(locale);
    std::unique_ptr<icu::DateFormat> result(
        icu::DateFormat::createDateTimeInstance(style, style, known));
    if (!result) {
        throw std::bad_alloc();
    }
    result->adoptCalendar(makeCalendar(known).release());
    return result;
}

}  // namespace

ustring to_ustring(const boost::posix_time::ptime& time, DateFormat format, const Locale& locale) {
    if (time.is_special()) {
        return {};
    }
    ranOutOfMemory = false;
    icu::UnicodeString text;
    makeFormat(format, locale)->format(secondOf(time), text);
    if (ranOutOfMemory || text.isBogus() || text.isEmpty()) {
        throw std::bad_alloc();
    }
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

}  // namespace fl::i18n::date_time
