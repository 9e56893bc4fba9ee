#pragma once
// All options in one table, from which the parser, `--help` and `--help-all` are made. The manual,
// docs/report.md and the completions are tested against `--help-all`.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options.h"

namespace depcompare {

struct OptionRow {
    struct Range {
        std::uint64_t least = 0;
        std::uint64_t most = 0;
    };

    std::string names;                      ///< with a comma between them: "-f,--format"
    std::string argument = {};              ///< what the argument is called; empty for a flag
    std::size_t words = 1;                  ///< of an argument
    std::vector<std::string> choices = {};  ///< the arguments that are allowed; empty for any
    std::optional<Range> range = {};        ///< of an argument that is a number
    std::string byDefault = {};             ///< the argument that holds without the option
    std::string description;                ///< one line, without choices and default
    bool repeats = false;                   ///< whether every occurrence counts, not just the last
    bool inShortHelp = false;
    std::string excludes = {};         ///< an option that cannot be used together with this one
    std::string (*shows)() = nullptr;  ///< the text that is printed instead of comparing
    /// Acts on the arguments of all occurrences, if the option repeats, else on those of the last one.
    std::function<void(Options& options, const std::vector<std::string>& arguments)> take = {};
};

struct OptionGroup {
    std::string heading;
    std::vector<OptionRow> rows;
};

/// Order: that of `--help-all`.
[[nodiscard]] std::vector<OptionGroup> optionTable();

/// Returns: the text of `--help`, which fits on one screen.
[[nodiscard]] std::string shortHelp();

/// Returns: the text of `--help-all`.
[[nodiscard]] std::string fullHelp();

}  // namespace depcompare
