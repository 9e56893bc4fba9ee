#include "cli/command_line.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <CLI/CLI.hpp>

#include "cli/option_table.h"
#include "input/input_error.h"
#include "output/visible_text.h"

namespace depcompare {

namespace {

CLI::Option* addOption(CLI::App& app, const OptionRow& row, Options& options) {
    if (row.argument.empty()) {
        return app.add_flag_callback(row.names, [&row, &options] {
            if (row.shows != nullptr) {
                throw Information{row.shows()};
            }
            if (row.take) {
                row.take(options, {});
            }
        });
    }
    if (row.repeats) {
        return app
            .add_option_function<std::vector<std::string>>(
                row.names,
                [&](const std::vector<std::string>& arguments) { row.take(options, arguments); })
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->allow_extra_args(false);
    }
    if (row.words > 1) {
        return app
            .add_option_function<std::vector<std::string>>(
                row.names,
                [&](const std::vector<std::string>& arguments) { row.take(options, arguments); })
            ->expected(static_cast<int>(row.words))
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
            ->allow_extra_args(false);
    }
    return app.add_option_function<std::string>(
        row.names, [&](const std::string& argument) { row.take(options, {argument}); });
}

CLI::Validator isOneOf(const std::vector<std::string>& choices) {
    const auto problemOf = [choices](const std::string& word) {
        return std::ranges::find(choices, word) != choices.end()
                   ? std::string()
                   : fmt::format("{} is none of {}", inQuotes(word), fmt::join(choices, ", "));
    };
    return {problemOf, ""};
}

/// The table says what may follow an option; whatever else there is has no meaning.
void refuseUnknown(const std::vector<std::string>& words, const Options& options) {
    const auto option = std::ranges::find_if(
        words, [](std::string_view word) { return word.size() > 1 && word.starts_with('-'); });
    if (option != words.end()) {
        throw UsageError(fmt::format("there is no option {}; --help-all lists them",
                                     inQuotes(option->substr(0, option->find('=')))));
    }
    if (!words.empty()) {
        throw UsageError(fmt::format("{} is one graph too many: {} and {} are compared",
                                     inQuotes(words.front()), inQuotes(options.inputs[0]),
                                     inQuotes(options.inputs[1])));
    }
}

void describe(CLI::App& app, const std::vector<OptionGroup>& table, Options& options) {
    app.set_help_flag();
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("LEFT", options.inputs[0]);
    app.add_option("RIGHT", options.inputs[1]);
    for (const auto& [heading, rows] : table) {
        for (const OptionRow& row : rows) {
            CLI::Option* const option = addOption(app, row, options);
            option->type_name(row.argument);
            if (!row.choices.empty()) {
                option->check(isOneOf(row.choices));
            }
            if (row.range) {
                option->transform(CLI::AsSizeValue(false).description(""))
                    ->check(CLI::Range(row.range->least, row.range->most).description(""));
            }
            if (!row.excludes.empty()) {
                option->excludes(app.get_option(row.excludes));
            }
        }
    }
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

void checkInsights(const Options& options) {
    const InsightOptions& insights = options.insights;
    const bool areOff = insights.detail == InsightDetail::off;
    if (options.failOn == FailOn::cycles && areOff) {
        throw UsageError("--fail-on cycles excludes --insights off");
    }
    if (insights.renames == RenameMode::off && !insights.statedRenames.empty()) {
        throw UsageError("stated renames exclude --renames off");
    }
    const bool writesRenames = std::ranges::find(options.reports, Format::renames,
                                                 &FurtherReport::format) != options.reports.end();
    if (writesRenames && (areOff || insights.renames == RenameMode::off)) {
        throw UsageError("a report of renames excludes --insights off and --renames off");
    }
    if (options.why &&
        (options.conversion || options.format != Format::text || !options.reports.empty())) {
        throw UsageError("--why excludes --format, --report, --convert and --textconv");
    }
}

void check(const Options& options) {
    if (options.conversion && (options.inputs[0].empty() || !options.inputs[1].empty())) {
        throw UsageError("--convert and --textconv take one graph");
    }
    if (!options.conversion && options.inputs[1].empty()) {
        throw UsageError("two graphs are needed, the old and the new one; --help says more");
    }
    if (options.inputs[0] == "-" && options.inputs[1] == "-") {
        throw UsageError("only one of the two graphs can come from standard input");
    }
    checkInsights(options);
    std::set<std::string> paths;
    if (options.outputFile) {
        paths.insert(*options.outputFile);
    }
    for (const FurtherReport& report : options.reports) {
        if (!paths.insert(report.path).second) {
            throw UsageError("two reports would be written to " + report.path);
        }
    }
}

// All words after --git are git's own: a path among them is not an option, whatever its name.
using Words = std::span<const char* const>;

std::pair<Words, std::optional<Words>> splitAtGit(Words words) {
    const auto git = std::ranges::find_if(
        words, [](const char* word) { return word == std::string_view("--git"); });
    if (git == words.end()) {
        return {words, std::nullopt};
    }
    const auto own = static_cast<std::size_t>(git - words.begin()) + 1;
    return {words.first(own), words.subspan(own)};
}

/// Returns: the path as `Input` takes it: git never means standard input.
std::string pathOf(std::string_view file) {
    return file == "-" ? "./-" : std::string(file);
}

/// Understands what git appends: the two files of a diff tool; a driver's path, then file, object
/// and mode of both sides, then a renamed file's new path and how it was renamed; or a lone path,
/// which is in conflict.
void takeGitWords(Words words, Options& options) {
    constexpr std::size_t oldFile = 1;
    constexpr std::size_t newFile = 4;
    constexpr std::size_t newPath = 7;
    if (!options.inputs[0].empty() || options.conversion) {
        throw UsageError("--git must be the last option, followed only by what git appends");
    }
    options.reading.emptyInputs = true;
    options.reading.requireFiles = false;
    switch (words.size()) {
        case 1:
            throw Information{
                fmt::format("* Unmerged path {}\n", visible(std::string_view(words[0])))};
        case 2:
            options.inputs = {pathOf(words[0]), pathOf(words[1])};
            options.names = options.inputs;
            return;
        case newPath:
        case newPath + 2: {
            const auto nameOf = [](std::string_view prefix, std::string_view path,
                                   std::string_view file) {
                return file == "/dev/null" ? std::string(file) : fmt::format("{}/{}", prefix, path);
            };
            options.inputs = {pathOf(words[oldFile]), pathOf(words[newFile])};
            options.names = {
                nameOf("a", words[0], words[oldFile]),
                nameOf("b", words[words.size() > newPath ? newPath : 0], words[newFile])};
            options.pager = false;  // Git shows the output among its own.
            return;
        }
        default:
            throw UsageError(
                fmt::format("--git: expected 1, 2, 7 or 9 arguments from git, got {}; "
                            "--git must be the last option",
                            words.size()));
    }
}

/// Whoever names a file expects it to be written.
void warnOfQuiet(Options& options) {
    if (options.outputFile || !options.reports.empty()) {
        options.warnings.push_back(
            fmt::format("--quiet writes nothing, {} included",
                        options.outputFile ? *options.outputFile : options.reports.front().path));
    }
}

/// The name of a file that gets text by default may promise something else.
void warnOfName(Options& options) {
    if (!options.outputFile) {
        return;
    }
    constexpr std::pair<std::string_view, std::string_view> promises[] = {
        {".html", "html"},   {".htm", "html"}, {".json", "json"},
        {".md", "markdown"}, {".csv", "csv"},  {".tsv", "tsv"},
    };
    for (const auto& [ending, format] : promises) {
        if (options.outputFile->ends_with(ending)) {
            options.warnings.push_back(
                fmt::format("{} gets text; --format {} writes what its name says",
                            *options.outputFile, format));
        }
    }
}

Options parse(const std::vector<OptionGroup>& table, Words words, std::optional<Words> gitWords) {
    Options options;
    options.reading.requireFiles = true;
    if (gitWords) {
        // Git takes any other status for a failure.
        options.failOn = FailOn::none;
    }
    CLI::App app("", "depcompare");
    describe(app, table, options);
    app.allow_extras();
    try {
        app.parse(static_cast<int>(words.size()), words.data());
    } catch (const CLI::ParseError& error) {
        throw UsageError(firstLine(error.what()));
    }
    refuseUnknown(app.remaining(), options);
    options.names = options.inputs;
    if (gitWords) {
        takeGitWords(*gitWords, options);
    }
    check(options);
    if (options.conversion) {
        return options;
    }
    if (options.quiet) {
        warnOfQuiet(options);
    } else if (app.get_option("--format")->empty() && !options.why) {
        warnOfName(options);
    }
    return options;
}

}  // namespace

std::variant<Options, Information> parseCommandLine(int argc, const char* const* argv) {
    const auto [words, gitWords] = splitAtGit({argv, static_cast<std::size_t>(argc)});
    try {
        return parse(optionTable(), words, gitWords);
    } catch (Information& information) {
        return std::move(information);
    }
}

}  // namespace depcompare
