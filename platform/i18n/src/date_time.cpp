#include <fl/i18n/date_time.h>

#include <memory>
#include <new>
#include <stdexcept>

#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>
#include <unicode/ures.h>
#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace fl::i18n::date_time {
namespace {

static_assert(static_cast<int>(DateFormat::full) == icu::DateFormat::kFull);
static_assert(static_cast<int>(DateFormat::long_) == icu::DateFormat::kLong);
static_assert(static_cast<int>(DateFormat::medium) == icu::DateFormat::kMedium);
static_assert(static_cast<int>(DateFormat::short_) == icu::DateFormat::kShort);

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
    calendar->setGregorianChange(
        secondOf(boost::posix_time::ptime(boost::date_time::min_date_time)), status);
    if (U_FAILURE(status)) {
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
    icu::UnicodeString text;
    makeFormat(format, locale)->format(secondOf(time), text);
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

}  // namespace fl::i18n::date_time
