#include "draft/timestamp.h"

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time.hpp>

namespace depcompare {
namespace {

std::string parsed(std::string_view text) {
    const auto time = parseTimestamp(text);
    return time ? to_iso_extended_string(*time) : "malformed";
}

TEST(ParseTimestamp, everyFormBecomesUTC) {
    const std::pair<const char*, const char*> cases[] = {
        {"2026-01-02", "2026-01-02T00:00:00"},
        {"2026-01-02T03:04", "2026-01-02T03:04:00"},
        {"2026-01-02T03:04:05", "2026-01-02T03:04:05"},
        {"2026-01-02T03:04:05Z", "2026-01-02T03:04:05"},
        {"2026-01-02T03:04:05.25", "2026-01-02T03:04:05.250000"},
        {"2026-01-02T03:04:05,123456789Z", "2026-01-02T03:04:05.123456"},
        {"2026-01-01T01:00:00+02:00", "2025-12-31T23:00:00"},
        {"2026-01-01T01:00:00+0230", "2025-12-31T22:30:00"},
        {"2024-02-28T23:30:00-01", "2024-02-29T00:30:00"},
        {"20260102T030405Z", "2026-01-02T03:04:05"},
        {"9999-12-31T23:59:59+01", "9999-12-31T22:59:59"},
        {"1400-01-01T00:00:00Z", "1400-01-01T00:00:00"},
        {"2016-12-31T23:59:60Z", "2017-01-01T00:00:00"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(parsed(text), expected) << text;
    }
}

TEST(ParseTimestamp, anythingElseIsMalformed) {
    std::vector<std::string> texts{"", " 2026-01-02", "2026-01-02\n", "2026-01-02T03:04:05 Z"};
    std::istringstream words(
        "2026 2026-01 2026-1-2 2026-13-01 2025-02-29 2026-01-02T 2026-01-02T24:00:00 "
        "2026-01-02T03:60 2026-01-02T03:04:61 2026-01-02T03:04:05. 2026-01-02T03:04:05+2 "
        "2026-01-02T03:04:05+24:00 2026-01-02Z 2026-0102 0001-01-01 2026-01-02T03:04:05Zulu "
        "9999-12-31T23:59:60Z 9999-12-31T23:00:00-01:00 1400-01-01T00:59:00+01:00");
    texts.insert(texts.end(), std::istream_iterator<std::string>(words), {});
    for (const std::string& text : texts) {
        EXPECT_EQ(parsed(text), "malformed") << text;
    }
}

}  // namespace
}  // namespace depcompare
