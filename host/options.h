#pragma once
// What the command line asks for.
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "presentation/enabled_filters.h"

namespace depcompare {

enum class Format : std::uint8_t { text, json, html, markdown, summary };
enum class When : std::uint8_t { automatic, always, never };

struct Options {
    std::array<std::string, 2> inputs;  ///< left, right; "-" is standard input
    Format format = Format::text;
    std::optional<std::string> outputFile;
    EnabledFilters filters = defaultFilters();
    std::string inputFormat = "auto";
    std::optional<std::string> locale;
    When colour = When::automatic;
    When progress = When::automatic;
    bool quiet = false;
};

}  // namespace depcompare
