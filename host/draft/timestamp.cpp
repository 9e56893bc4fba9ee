#include "draft/timestamp.h"

#include <stdexcept>

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace depcompare {

namespace {

using boost::posix_time::hours;
using boost::posix_time::microseconds;
using boost::posix_time::minutes;
using boost::posix_time::ptime;
using boost::posix_time::seconds;
using boost::posix_time::time_duration;

struct Malformed {};

void require(bool holds) {
    if (!holds) {
        throw Malformed();
    }
}

class TimestampText {
  public:
    explicit TimestampText(std::string_view text) : rest_(text) {}

    ptime read() {
        const int year = number(4, 9999);
        const bool separated = skip('-');
        const int month = number(2, 12);
        require(skip('-') == separated);
        const int day = number(2, 31);
        const boost::gregorian::date date(static_cast<unsigned short>(year),
                                          static_cast<unsigned short>(month),
                                          static_cast<unsigned short>(day));
        time_duration time;
        if (skip('T')) {
            time = timeOfDay(separated);
            time -= offset();
        }
        require(rest_.empty());
        const ptime moment = ptime(date) + time;
        // Beyond them the calendar ends, but not the arithmetic.
        require(moment.date() >= boost::gregorian::date(1400, 1, 1) &&
                moment.date() <= boost::gregorian::date(9999, 12, 31));
        return moment;
    }

  private:
    time_duration timeOfDay(bool separated) {
        time_duration time = hours(number(2, 23));
        require(skip(':') == separated);
        time += minutes(number(2, 59));
        if (separated ? !skip(':') : !startsWithDigit()) {
            return time;
        }
        time += seconds(number(2, 60));
        if (skip('.') || skip(',')) {
            time += microseconds(fraction());
        }
        return time;
    }

    time_duration offset() {
        if (rest_.empty() || skip('Z')) {
            return {};
        }
        const bool east = skip('+');
        require(east || skip('-'));
        time_duration offset = hours(number(2, 23));
        if (skip(':') || startsWithDigit()) {
            offset += minutes(number(2, 59));
        }
        return east ? offset : -offset;
    }

    int fraction() {
        require(startsWithDigit());
        int micros = 0;
        for (int unit = 100'000; startsWithDigit(); unit /= 10) {
            micros += digit() * unit;
        }
        return micros;
    }

    int number(int digits, int largest) {
        int value = 0;
        for (int i = 0; i < digits; ++i) {
            require(startsWithDigit());
            value = value * 10 + digit();
        }
        require(value <= largest);
        return value;
    }

    [[nodiscard]] bool startsWithDigit() const {
        return !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9';
    }

    int digit() {
        const int value = rest_.front() - '0';
        rest_.remove_prefix(1);
        return value;
    }

    bool skip(char expected) {
        const bool found = rest_.starts_with(expected);
        rest_.remove_prefix(found ? 1 : 0);
        return found;
    }

    std::string_view rest_;
};

}  // namespace

std::optional<ptime> parseTimestamp(std::string_view text) {
    try {
        return TimestampText(text).read();
    } catch (const Malformed&) {
        return std::nullopt;
    } catch (const std::out_of_range&) {  // no such day, or a year that the calendar lacks
        return std::nullopt;
    }
}

}  // namespace depcompare
