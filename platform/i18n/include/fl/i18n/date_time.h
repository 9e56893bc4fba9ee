#pragma once
// Dates as text.
#include <boost/date_time/posix_time/ptime.hpp>

#include <fl/i18n/export.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/ustring.h>

namespace fl::i18n {

/// How much of a date and a time is shown, by ICU's numbers.
enum class DateFormat : int { full = 0, long_ = 1, medium = 2, short_ = 3 };

namespace date_time {

/// Returns: the date, in the proleptic Gregorian calendar, and the time of day of `time`, both in
///          UTC, fractions of a second cut off; empty for a special value (not a date, an infinity).
/// Throws:  std::invalid_argument if `format` has none of the enumeration's values; std::bad_alloc,
///          also for an allocation that ICU does without.
[[nodiscard]] FL_I18N_EXPORT ustring to_ustring(const boost::posix_time::ptime& time,
                                                DateFormat format,
                                                const Locale& locale = Locale::global());

}  // namespace date_time
}  // namespace fl::i18n
