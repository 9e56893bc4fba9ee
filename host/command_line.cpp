#include "command_line.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "presentation/enabled_filters.h"
#include "readers/read_graph.h"

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
    app.description("Compares two dependency graphs and shows what changed.");
    app.footer("Exit status: 0 no visible difference, 1 some, 2 trouble.");
    app.set_version_flag("--version", "depcompare " DEPCOMPARE_VERSION);
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);

    app.add_option("LEFT", options.inputs[0], "The old graph; - is standard input")
        ->required()
        ->type_name("");
    app.add_option("RIGHT", options.inputs[1], "The new graph; - is standard input")
        ->required()
        ->type_name("");
    addChoice(app, "-f,--format", options.format, formats, "What to write [text]");
    app.add_option("-o,--output", options.outputFile, "Write there, whole or not at all")
        ->type_name("FILE");
    auto inputFormatNames = inputFormats();
    inputFormatNames.insert(inputFormatNames.begin(), "auto");
    restrict(app.add_option("--input-format", options.inputFormat, "How to read the inputs [auto]"),
             inputFormatNames);
    app.add_option("--locale", options.locale, "Language of labels, letter case and dates")
        ->type_name("NAME");
    addChoice(app, "--color", options.colour, occasions, "Colours [auto]");
    addChoice(app, "--progress", options.progress, occasions,
              "A progress line on standard error [auto]");
    app.add_flag("-q,--quiet", options.quiet, "Write nothing, answer by exit status");
}

void describeFilters(CLI::App& app, std::vector<std::string>& names, bool& none) {
    auto* const filter =
        app.add_option("--filter", names, "Hide some differences; may be repeated [nonstructural]")
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->allow_extra_args(false);
    restrict(filter, filterNames());
    app.add_flag("--no-filter", none, "Show everything")->excludes(filter);
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

void check(const Options& options) {
    if (options.inputs[0] == "-" && options.inputs[1] == "-") {
        throw UsageError("only one of the two graphs can come from standard input");
    }
    for (const auto& [name, format] : formats) {
        if (format == options.format && (format == Format::html || format == Format::markdown)) {
            throw UsageError("--format " + std::string(name) + ": not available yet");
        }
    }
}

}  // namespace

std::variant<Options, Information> parseCommandLine(int argc, const char* const* argv) {
    Options options;
    std::vector<std::string> filters;
    bool withoutFilters = false;
    CLI::App app("", "depcompare");
    describe(app, options);
    describeFilters(app, filters, withoutFilters);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return Information{app.help()};
    } catch (const CLI::CallForVersion& version) {
        return Information{std::string(version.what()) + "\n"};
    } catch (const CLI::ParseError& error) {
        throw UsageError(firstLine(error.what()));
    }
    check(options);
    if (withoutFilters || !filters.empty()) {
        options.filters = filtersNamed(filters);
    }
    return options;
}

}  // namespace depcompare
