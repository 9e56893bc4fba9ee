#pragma once
// Points in time as files write them.
#include <optional>
#include <string_view>

#include <boost/date_time/posix_time/ptime.hpp>

namespace depcompare {

/// Parses ISO 8601: a date, or a date and a time with minutes, seconds or a fraction of them, with or
/// without an offset (Z, +02:00, +0200, +02); UTC by default.
///
/// Returns: the time in UTC, to the microsecond; nothing for any other text and outside the years
///          1400 to 9999.
[[nodiscard]] std::optional<boost::posix_time::ptime> parseTimestamp(std::string_view text);

}  // namespace depcompare
