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
#include <CLI/CLI.hpp>

#include "cli/git_arguments.h"
#include "cli/help_text.h"
#include "cli/reading_options.h"
#include "output/visible_text.h"
#include "presentation/enabled_filters.h"
#include "reports/markdown/markdown_report.h"

namespace depcompare {

namespace {

template <class Value>
struct Choice {
    std::string_view name;
    Value value;
};

constexpr std::array<Choice<Format>, 5> formats{{{"text", Format::text},
                                                 {"json", Format::json},
                                                 {"html", Format::html},
                                                 {"markdown", Format::markdown},
                                                 {"summary", Format::summary}}};

constexpr std::array<Choice<When>, 3> occasions{
    {{"auto", When::automatic}, {"always", When::always}, {"never", When::never}}};

constexpr std::array<Choice<FailOn>, 3> causes{
    {{"any", FailOn::any}, {"structural", FailOn::structural}, {"none", FailOn::none}}};

CLI::Option* restrict(CLI::Option* option, const std::vector<std::string>& names) {
    return option->check(CLI::IsMember(names).description(""))
        ->type_name(CLI::detail::join(names, "|"));
}

template <class Value, std::size_t Count>
void addChoice(CLI::App& app, const std::string& option, Value& value,
               const std::array<Choice<Value>, Count>& choices, const std::string& description) {
    std::vector<std::string> names;
    names.reserve(Count);
    for (const auto& [name, choice] : choices) {
        names.emplace_back(name);
    }
    const auto choose = [&value, &choices](const std::string& chosen) {
        for (const auto& [name, choice] : choices) {
            if (name == chosen) {
                value = choice;
            }
        }
    };
    restrict(app.add_option_function<std::string>(option, choose, description), names);
}

void describe(CLI::App& app, Options& options) {
    app.set_help_flag("-h,--help", "Say the most important on a screen");
    app.set_help_all_flag("--help-all", "List all options");
    app.set_version_flag("--version", "depcompare " DEPCOMPARE_VERSION);
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);

    app.add_option("LEFT", options.inputs[0], "The old graph; - is standard input")->type_name("");
    app.add_option("RIGHT", options.inputs[1], "The new graph; - is standard input")->type_name("");
    addChoice(app, "-f,--format", options.format, formats, "What to write [text]");
    app.add_option("-o,--output", options.outputFile, "Write there, whole or not at all")
        ->type_name("FILE");
    app.add_option("--locale", options.locale, "Language of labels, letter case and dates")
        ->type_name("NAME");
    addChoice(app, "--color", options.colour, occasions, "Colours [auto]");
    addChoice(app, "--progress", options.progress, occasions,
              "A progress line on standard error [auto]");
    app.add_flag_callback(
        "--no-pager", [&] { options.pager = false; },
        "Write to a terminal directly, not through a pager");
    app.add_flag("-q,--quiet", options.quiet, "Write nothing, answer by exit status");
    addChoice(app, "--fail-on", options.failOn, causes,
              "Exit status 1 for these visible differences [any]");
}

void describeFilters(CLI::App& app, std::vector<std::string>& names, bool& none) {
    auto* const filter =
        app.add_option("--filter", names, "Hide some differences; may be repeated [nonstructural]")
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->allow_extra_args(false);
    restrict(filter, filterNames());
    app.add_flag("--no-filter", none, "Show everything")->excludes(filter);
}

void addConversions(CLI::App& app, Options& options) {
    auto* const convert = app.add_option_function<std::string>(
        "--convert", [&](const std::string& /*format*/) { options.conversion = GraphForm::jgf; },
        "Write the graph LEFT, the only one, in this format instead of comparing");
    restrict(convert, {"jgf"});
    app.add_flag_callback(
           "--textconv",
           [&] {
               options.conversion = GraphForm::lines;
               // Git has files converted too that hold nothing yet.
               options.reading.emptyInputs = true;
           },
           "Write the graph LEFT, the only one, as lines that git diff can compare")
        ->excludes(convert);
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

FurtherReport furtherReport(const std::string& text) {
    const std::size_t end = text.find('=');
    for (const auto& [name, format] : formats) {
        if (end != text.npos && end + 1 < text.size() && text.substr(0, end) == name) {
            return {.format = format, .path = text.substr(end + 1)};
        }
    }
    throw CLI::ValidationError("--report", text + " is not a format, = and a file");
}

void describeReports(CLI::App& app, Options& options) {
    app.add_option_function<std::vector<std::string>>(
           "--report",
           [&](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   options.reports.push_back(furtherReport(text));
               }
           },
           "Also write this form of report there; may be repeated")
        ->type_name("FORMAT=FILE")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
    app.add_option("--max-bytes", options.mostBytes, "Cut a Markdown report at this size")
        ->type_name("N");
}

void checkReports(const Options& options) {
    std::set<std::string> paths;
    if (options.outputFile) {
        paths.insert(*options.outputFile);
    }
    for (const FurtherReport& report : options.reports) {
        if (!paths.insert(report.path).second) {
            throw UsageError("two reports would go to " + report.path);
        }
    }
    if (options.mostBytes.value_or(fewestMarkdownBytes) < fewestMarkdownBytes) {
        throw UsageError(fmt::format("--max-bytes: less than {} leaves no room for a report",
                                     fewestMarkdownBytes));
    }
}

void check(const Options& options) {
    if (options.conversion.has_value() != options.inputs[1].empty()) {
        throw UsageError(options.conversion ? "--convert and --textconv take one graph"
                                            : "RIGHT is required");
    }
    if (options.inputs[0] == "-" && options.inputs[1] == "-") {
        throw UsageError("only one of the two graphs can come from standard input");
    }
    checkReports(options);
}

void addGit(CLI::App& app) {
    const std::string description = "Compare as git asks; all that follows is from git";
    app.add_flag("--git", description);
}

// All words behind --git are git's own: a path among them is no option, whatever its name.
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

std::optional<Information> takeGitWords(Words words, Options& options) {
    if (!options.inputs[0].empty() || options.conversion) {
        throw UsageError("--git has to be the last word before those that git adds");
    }
    auto git = gitArguments(words);
    if (!git) {
        return Information{
            fmt::format("* Unmerged path {}\n", visible(std::string_view(words[0])))};
    }
    options.inputs = std::move(git->paths);
    options.names = std::move(git->names);
    options.reading.emptyInputs = true;
    options.pager = options.pager && !git->driver;
    return std::nullopt;
}

}  // namespace

std::variant<Options, Information> parseCommandLine(int argc, const char* const* argv) {
    Options options;
    std::vector<std::string> filters;
    bool withoutFilters = false;
    const auto [words, gitWords] = splitAtGit({argv, static_cast<std::size_t>(argc)});
    if (gitWords) {
        // Git takes any other status for a failure.
        options.failOn = FailOn::none;
    }
    CLI::App app("", "depcompare");
    describe(app, options);
    describeReports(app, options);
    describeFilters(app, filters, withoutFilters);
    addReadingOptions(app, options.reading);
    addConversions(app, options);
    addGit(app);
    app.get_option("LEFT")->required(!gitWords);
    try {
        app.parse(static_cast<int>(words.size()), words.data());
    } catch (const CLI::CallForHelp&) {
        return Information{std::string(helpText)};
    } catch (const CLI::CallForAllHelp&) {
        return Information{app.help()};
    } catch (const CLI::CallForVersion& version) {
        return Information{std::string(version.what()) + "\n"};
    } catch (const CLI::ParseError& error) {
        throw UsageError(firstLine(error.what()));
    }
    options.names = options.inputs;
    if (gitWords) {
        if (auto information = takeGitWords(*gitWords, options)) {
            return *std::move(information);
        }
    }
    check(options);
    if (withoutFilters || !filters.empty()) {
        options.filters = filtersNamed(filters);
    }
    return options;
}

}  // namespace depcompare
