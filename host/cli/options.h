#pragma once
// What the command line asks for.
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "draft/read_options.h"
#include "output/terminal.h"
#include "presentation/enabled_filters.h"
#include "presentation/insights.h"

namespace depcompare {

/// Renames are a list that can be read again, and only a further report.
enum class Format : std::uint8_t { text, json, html, markdown, summary, csv, tsv, renames };
/// Which visible differences make the exit status 1; of cycles those that were added or closed.
enum class FailOn : std::uint8_t { any, structural, none, cycles };
/// What a graph can be written as, instead of comparing it.
enum class GraphForm : std::uint8_t { jgf, lines, csv };

/// The command line is wrong; the text says how, on one line.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A report besides the one that goes to the output.
struct FurtherReport {
    Format format = Format::text;
    std::string path;
};

struct Options {
    std::array<std::string, 2> inputs;  ///< left, right; "-" is standard input
    std::array<std::string, 2> names;   ///< what reports call them
    std::optional<std::string> outputFile;
    std::vector<std::string> warnings;  ///< of options that may mean something else
    std::vector<FurtherReport> reports;
    std::optional<std::size_t> mostBytes;  ///< of a Markdown report; see `mostMarkdownBytes`
    EnabledFilters filters = defaultFilters();
    ReadOptions reading;
    InsightOptions insights;
    std::optional<std::array<std::string, 2>> why;  ///< show why the one node needs the other
    std::optional<std::string> locale;
    std::optional<GraphForm> conversion;  ///< write the left input, the only one, as this
    Format format = Format::text;
    FailOn failOn = FailOn::any;
    When colour = When::automatic;
    When progress = When::automatic;
    bool rawCells = false;         ///< whether a table may have cells that look like formulas
    bool whenChanged = false;      ///< reports are empty if no difference is visible
    bool showsTelling = true;      ///< whether telling properties are shown, whatever the filters
    bool asksForInsights = false;  ///< by name: they are computed even if nothing is printed
    bool quiet = false;
    bool pager = true;  ///< whether a pager shows a text report on a terminal
};

}  // namespace depcompare
