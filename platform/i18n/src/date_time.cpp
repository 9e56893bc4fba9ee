#include <fl/i18n/date_time.h>

#include <memory>
#include <new>
#include <stdexcept>

#include <unicode/datefmt.h>
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

// For a language without data ICU takes the locale of the environment; here that is English.
icu::Locale withData(const Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    ures_close(ures_open(nullptr, locale.name().c_str(), &status));
    const bool isKnown = U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING;
    return isKnown ? icu::Locale(locale.name().c_str()) : icu::Locale::getEnglish();
}

std::unique_ptr<icu::DateFormat> makeFormat(DateFormat format, const Locale& locale) {
    if (format < DateFormat::full || format > DateFormat::short_) {
        throw std::invalid_argument("There is no date format " +
                                    std::to_string(static_cast<int>(format)) + ".");
    }
    const auto style = static_cast<icu::DateFormat::EStyle>(format);
    std::unique_ptr<icu::DateFormat> result(
        icu::DateFormat::createDateTimeInstance(style, style, withData(locale)));
    if (!result) {
        throw std::bad_alloc();
    }
    result->adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
    return result;
}

}  // namespace

ustring to_ustring(const boost::posix_time::ptime& time, DateFormat format, const Locale& locale) {
    if (time.is_special()) {
        return {};
    }
    const boost::posix_time::ptime epoch(boost::gregorian::date(1970, 1, 1));
    const auto milliseconds = static_cast<UDate>((time - epoch).total_milliseconds());
    icu::UnicodeString text;
    makeFormat(format, locale)->format(milliseconds, text);
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

}  // namespace fl::i18n::date_time
