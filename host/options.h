#pragma once
// What the command line asks for.
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "presentation/enabled_filters.h"
#include "readers/read_options.h"

namespace depcompare {

enum class Format : std::uint8_t { text, json, html, markdown, summary };
enum class When : std::uint8_t { automatic, always, never };

/// A report besides the one that goes to the output.
struct FurtherReport {
    Format format = Format::text;
    std::string path;
};

struct Options {
    std::array<std::string, 2> inputs;  ///< left, right; "-" is standard input
    Format format = Format::text;
    std::optional<std::string> outputFile;
    std::vector<FurtherReport> reports;
    std::optional<std::size_t> mostBytes;  ///< of a Markdown report
    EnabledFilters filters = defaultFilters();
    ReadOptions reading;
    bool convertToJGF = false;  ///< write the left input, the only one, instead of comparing
    std::optional<std::string> locale;
    When colour = When::automatic;
    When progress = When::automatic;
    bool quiet = false;
};

}  // namespace depcompare
