#include "cli/option_table.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "formats/line_reader.h"
#include "formats/read_graph.h"
#include "input/input.h"
#include "input/input_error.h"
#include "presentation/enabled_filters.h"
#include "presentation/insights.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"

namespace depcompare {

namespace {

using Arguments = std::vector<std::string>;

template <class Value>
struct Choice {
    std::string_view name;
    Value value;
};

constexpr Choice<Format> formats[] = {{"text", Format::text},       {"json", Format::json},
                                      {"html", Format::html},       {"markdown", Format::markdown},
                                      {"summary", Format::summary}, {"csv", Format::csv},
                                      {"tsv", Format::tsv}};
constexpr Choice<When> occasions[] = {
    {"auto", When::automatic}, {"always", When::always}, {"never", When::never}};
constexpr Choice<FailOn> causes[] = {{"any", FailOn::any},
                                     {"structural", FailOn::structural},
                                     {"cycles", FailOn::cycles},
                                     {"none", FailOn::none}};
constexpr Choice<InsightDetail> details[] = {{"off", InsightDetail::off},
                                             {"short", InsightDetail::shortened},
                                             {"full", InsightDetail::full}};
constexpr Choice<RenameMode> renameModes[] = {
    {"off", RenameMode::off}, {"report", RenameMode::report}, {"apply", RenameMode::apply}};
constexpr Choice<GraphForm> graphForms[] = {{"csv", GraphForm::csv}, {"jgf", GraphForm::jgf}};

template <class Value, std::size_t Count>
Arguments namesOf(const Choice<Value> (&choices)[Count]) {
    Arguments names;
    for (const auto& choice : choices) {
        names.emplace_back(choice.name);
    }
    return names;
}

Arguments readableFormats() {
    Arguments names = inputFormats();
    names.insert(names.begin(), "auto");
    return names;
}

// What options do.

template <class Member, class Value, std::size_t Count>
auto choose(Member Options::*member, const Choice<Value> (&choices)[Count]) {
    return [member, &choices](Options& options, const Arguments& arguments) {
        options.*member = std::ranges::find(choices, arguments.back(), &Choice<Value>::name)->value;
    };
}

template <class Member, class Value>
auto set(Member Options::*member, Value value) {
    return [member, value](Options& options, const Arguments&) { options.*member = value; };
}

template <class Member>
auto store(Member Options::*member) {
    return [member](Options& options, const Arguments& arguments) {
        options.*member = arguments.back();
    };
}

void showOnly(Options& options, EnabledFilters filters) {
    options.filters = std::move(filters);
    options.showsTelling = false;
}

/// Returns: the format of a further report; nothing if there is none of this name.
std::optional<Format> furtherFormat(std::string_view name) {
    if (name == "renames") {
        return Format::renames;
    }
    const auto* const format = std::ranges::find(formats, name, &Choice<Format>::name);
    return format == std::end(formats) ? std::nullopt : std::optional(format->value);
}

auto collect(std::vector<std::string> Selection::*member) {
    return [member](Options& options, const Arguments& arguments) {
        options.reading.selection.*member = arguments;
    };
}

void addReplacements(Options& options, const Arguments& arguments) {
    for (const std::string& text : arguments) {
        try {
            options.reading.idEdits.replacements.emplace_back(text);
        } catch (const std::invalid_argument& problem) {
            throw UsageError(fmt::format("--id-replace {}: {}", text, problem.what()));
        }
    }
}

void addReports(Options& options, const Arguments& arguments) {
    for (const std::string_view text : arguments) {
        const std::size_t end = std::min(text.find('='), text.size());
        const auto format = furtherFormat(text.substr(0, end));
        if (!format || end + 1 >= text.size()) {
            throw UsageError(
                fmt::format("--report: {} is not FORMAT=FILE, such as html=page.html", text));
        }
        options.reports.push_back({.format = *format, .path = std::string(text.substr(end + 1))});
    }
}

void addLinkTypes(Options& options, const Arguments& globs) {
    for (const std::string& glob : globs) {
        if (glob.empty() || glob == "!") {
            throw UsageError(fmt::format("--link-type: {} names no type", inQuotes(glob)));
        }
    }
    options.insights.linkTypes = globs;
}

void stateRename(Options& options, const Arguments& pairs) {
    for (const std::string_view pair : pairs) {
        const std::size_t middle = pair.find('=');
        if (middle == std::string_view::npos || middle != pair.rfind('=')) {
            throw UsageError(fmt::format(
                "--rename: {} is not OLD=NEW; IDs with a = can be in a file for --renames", pair));
        }
        options.insights.statedRenames.push_back(
            {.left = fl::i18n::utf8_to_ustring(pair.substr(0, middle)),
             .right = fl::i18n::utf8_to_ustring(pair.substr(middle + 1))});
    }
}

/// Reads lines of OLD<TAB>NEW, with ! before a pair that is not to be made. What comes after another
/// tab is a remark.
void readRenames(const std::string& path, InsightOptions& options) {
    Input input = Input::open(path);
    LineReader lines(input);
    while (const auto next = lines.next()) {
        std::string_view line = withoutReturn(*next);
        if (line.empty()) {
            continue;
        }
        const bool isForbidden = line.starts_with('!');
        line.remove_prefix(isForbidden ? 1 : 0);
        const std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos) {
            lines.fail("not OLD<TAB>NEW");
        }
        const std::string_view rest = line.substr(tab + 1);
        (isForbidden ? options.forbiddenRenames : options.statedRenames)
            .push_back({.left = fl::i18n::utf8_to_ustring(line.substr(0, tab)),
                        .right = fl::i18n::utf8_to_ustring(rest.substr(0, rest.find('\t')))});
    }
}

void setRenames(Options& options, const Arguments& arguments) {
    for (const std::string& argument : arguments) {
        const auto* const mode =
            std::ranges::find(renameModes, argument, &Choice<RenameMode>::name);
        if (mode == std::end(renameModes)) {
            readRenames(argument, options.insights);
        } else {
            options.insights.renames = mode->value;
        }
    }
}

template <class Number>
OptionRow limit(const std::string& names, Number Limits::*member, std::uint64_t least,
                std::uint64_t most, const std::string& description) {
    return {.names = names,
            .argument = "N",
            .range = {{.least = least, .most = most}},
            .byDefault = fmt::format("{}", Limits().*member),
            .description = description,
            .take = [member](Options& options, const Arguments& arguments) {
                options.reading.limits.*member = std::stoull(arguments.back());
            }};
}

// Where sizes end that no computer has.
constexpr std::uint64_t mostBytes = std::uint64_t{1} << 50U;

// The groups. A line per fact, so that the table can be read down.

OptionGroup reportOptions() {
    return {"Reports",
            {{.names = "-f,--format",
              .argument = "FORMAT",
              .choices = namesOf(formats),
              .byDefault = "text",
              .description = "What to write",
              .inShortHelp = true,
              .take = choose(&Options::format, formats)},
             {.names = "-o,--output",
              .argument = "FILE",
              .description = "Write to FILE instead of standard output (atomically)",
              .inShortHelp = true,
              .take = store(&Options::outputFile)},
             {.names = "--report",
              .argument = "FORMAT=FILE",
              .description = "Also write a report to FILE",
              .repeats = true,
              .inShortHelp = true,
              .take = addReports},
             {.names = "--max-bytes",
              .argument = "N",
              .range = {{.least = fewestMarkdownBytes, .most = mostBytes}},
              .byDefault = fmt::format("{}", mostMarkdownBytes),
              .description = "Truncate a Markdown report at N bytes",
              .take =
                  [](Options& options, const Arguments& arguments) {
                      options.mostBytes = std::stoull(arguments.back());
                  }},
             {.names = "--raw",
              .description = "Write cells of a table even if they look like formulas",
              .take = set(&Options::rawCells, true)},
             {.names = "--when-changed",
              .description = "Write nothing if no difference is visible",
              .take = set(&Options::whenChanged, true)},
             {.names = "-q,--quiet",
              .description = "Write nothing, no reports; answer by the exit status",
              .inShortHelp = true,
              .take = set(&Options::quiet, true)},
             {.names = "--locale",
              .argument = "NAME",
              .description = "Language of labels, letter case and dates",
              .take = store(&Options::locale)},
             {.names = "--color",
              .argument = "WHEN",
              .choices = namesOf(occasions),
              .byDefault = "auto",
              .description = "Use colours",
              .inShortHelp = true,
              .take = choose(&Options::colour, occasions)},
             {.names = "--progress",
              .argument = "WHEN",
              .choices = namesOf(occasions),
              .byDefault = "auto",
              .description = "Show progress on standard error",
              .take = choose(&Options::progress, occasions)},
             {.names = "--no-pager",
              .description = "Write to a terminal directly, without a pager",
              .take = set(&Options::pager, false)}}};
}

OptionGroup filterOptions() {
    return {"What is shown",
            {{.names = "--filter",
              .argument = "NAME",
              .choices = filterNames(),
              .byDefault = "nonstructural",
              .description = "Hide some differences",
              .repeats = true,
              .inShortHelp = true,
              .take = [](Options& options,
                         const Arguments& names) { showOnly(options, filtersNamed(names)); }},
             {.names = "--no-filter",
              .description = "Show everything",
              .inShortHelp = true,
              .excludes = "--filter",
              .take = [](Options& options, const Arguments&) { showOnly(options, {}); }},
             {.names = "--fail-on",
              .argument = "WHICH",
              .choices = namesOf(causes),
              .byDefault = "any",
              .description = "Differences for exit status 1",
              .inShortHelp = true,
              .take = choose(&Options::failOn, causes)}}};
}

OptionGroup insightOptions() {
    constexpr std::uint64_t deepest = 1'000;
    return {"What it means",
            {{.names = "--insights",
              .argument = "HOW",
              .choices = namesOf(details),
              .byDefault = "short",
              .description = "Say what the differences mean",
              .inShortHelp = true,
              .take =
                  [](Options& options, const Arguments& arguments) {
                      options.insights.detail =
                          std::ranges::find(details, arguments.back(), &Choice<InsightDetail>::name)
                              ->value;
                      options.asksForInsights = options.insights.detail != InsightDetail::off;
                  }},
             {.names = "--area-depth",
              .argument = "N",
              .range = {{.least = 1, .most = deepest}},
              .description = "Make areas of folders at this depth",
              .take =
                  [](Options& options, const Arguments& arguments) {
                      options.insights.areas.depth = std::stoull(arguments.back());
                  }},
             {.names = "--area",
              .argument = "PROPERTY",
              .description = "Make areas of nodes with the same value of a property",
              .excludes = "--area-depth",
              .take =
                  [](Options& options, const Arguments& keys) {
                      options.insights.areas.property = fl::i18n::utf8_to_ustring(keys.back());
                  }},
             {.names = "--area-separator",
              .argument = "TEXT",
              .byDefault = "/",
              .description = "What is between the folders of an ID",
              .take =
                  [](Options& options, const Arguments& arguments) {
                      if (arguments.back().empty()) {
                          throw UsageError("--area-separator: the text is empty");
                      }
                      options.insights.areas.separator =
                          fl::i18n::utf8_to_ustring(arguments.back());
                  }},
             {.names = "--link-type",
              .argument = "GLOB",
              .description = "Count only links of these types, with ! none of them",
              .repeats = true,
              .take = addLinkTypes},
             {.names = "--renames",
              .argument = "off|report|apply|FILE",
              .byDefault = "report",
              .description = "Look for renames, or read them from FILE",
              .repeats = true,
              .take = setRenames},
             {.names = "--rename",
              .argument = "OLD=NEW",
              .description = "State that OLD became NEW",
              .repeats = true,
              .take = stateRename},
             {.names = "--why",
              .argument = "A B",
              .words = 2,
              .description = "Show how A needs B on either side, and nothing else",
              .inShortHelp = true,
              .take = [](Options& options, const Arguments& nodes) {
                  options.why = {nodes[0], nodes[1]};
              }}}};
}

OptionGroup readingOptions() {
    return {"Reading",
            {{.names = "--input-format",
              .argument = "NAME",
              .choices = readableFormats(),
              .byDefault = "auto",
              .description = "Format of the graphs; see --list-formats",
              .inShortHelp = true,
              .take = [](Options& options,
                         const Arguments& names) { options.reading.format = names.back(); }},
             {.names = "--list-formats",
              .description = "Explain the formats that can be read",
              .inShortHelp = true,
              .shows = describedFormats},
             {.names = "--node-id",
              .argument = "KEY",
              .byDefault = "auto",
              .description = "Identify nodes by: auto, id, name, or a property",
              .inShortHelp = true,
              .take = [](Options& options,
                         const Arguments& keys) { options.reading.nodeID = keys.back(); }},
             {.names = "--file-type",
              .argument = "TYPE",
              .description = "Count nodes of this type as files, too",
              .repeats = true,
              .take = [](Options& options,
                         const Arguments& types) { options.reading.fileTypes = types; }},
             {.names = "--allow-empty",
              .description = "Compare a graph even if none of its nodes is a file",
              .take = [](Options& options, const Arguments&) {
                  options.reading.requireFiles = false;
              }}}};
}

OptionGroup selectingOptions() {
    return {"What is compared (GLOB: * ? and ranges in brackets, of the whole text)",
            {{.names = "--only",
              .argument = "GLOB",
              .description = "Compare only nodes with such an ID, and what they need",
              .repeats = true,
              .take = collect(&Selection::only)},
             {.names = "--exclude",
              .argument = "GLOB",
              .description = "Leave out nodes with such an ID",
              .repeats = true,
              .take = collect(&Selection::exclude)},
             {.names = "--ignore-property",
              .argument = "GLOB",
              .description = "Leave out properties with such a key",
              .repeats = true,
              .take = collect(&Selection::ignoredProperties)},
             {.names = "--ignore-component",
              .argument = "GLOB",
              .description = "Leave such components out of dependencies",
              .repeats = true,
              .take = collect(&Selection::ignoredComponents)},
             {.names = "--keep-build-data",
              .description = "Keep what changes with every build of an SBOM",
              .take = [](Options& options,
                         const Arguments&) { options.reading.selection.keepsBuildData = true; }},
             {.names = "--strip-prefix",
              .argument = "PATH",
              .description = "Take this folder off the IDs of nodes",
              .repeats = true,
              .take = [](Options& options,
                         const Arguments& paths) { options.reading.idEdits.prefixes = paths; }},
             {.names = "--strip-version",
              .description = "Take the versions of packages off the IDs of nodes",
              .take = [](Options& options,
                         const Arguments&) { options.reading.idEdits.withoutVersion = true; }},
             {.names = "--id-replace",
              .argument = "EDIT",
              .description = "Edit the IDs of nodes: s/PATTERN/TEXT/, as sed does",
              .repeats = true,
              .take = addReplacements}}};
}

OptionGroup limitOptions() {
    // Nodes, edges and texts are numbered with 32 bits.
    constexpr std::uint64_t mostNumbers = 2'000'000'000;
    // Nested values are visited recursively.
    constexpr std::uint64_t mostNested = 1'000;
    // The program's own words have to fit.
    constexpr std::uint64_t leastTextBytes = 16;
    constexpr std::uint64_t mostTextBytes = std::uint64_t{1} << 30U;
    return {"Limits on inputs (N may end in K, M or G)",
            {limit("--max-input-bytes", &Limits::bytes, 1, mostBytes, "Size, uncompressed"),
             limit("--max-nesting", &Limits::nestingDepth, 1, mostNested, "Depth of nesting"),
             limit("--max-nodes", &Limits::nodes, 1, mostNumbers, "Nodes of a graph"),
             limit("--max-edges", &Limits::edges, 1, mostNumbers, "Edges of a graph"),
             limit("--max-text-bytes", &Limits::textBytes, leastTextBytes, mostTextBytes,
                   "Bytes of one text")}};
}

OptionGroup conversionOptions() {
    return {"One graph",
            {{.names = "--convert",
              .argument = "FORMAT",
              .choices = namesOf(graphForms),
              .description = "Write LEFT, the only graph, in another format",
              .inShortHelp = true,
              .take =
                  [](Options& options, const Arguments& forms) {
                      choose(&Options::conversion, graphForms)(options, forms);
                      options.reading.selection.keepsBuildData = true;
                  }},
             {.names = "--textconv",
              .description = "Write LEFT, the only graph, as lines for git diff",
              .inShortHelp = true,
              .excludes = "--convert",
              .take = [](Options& options, const Arguments&) {
                  options.conversion = GraphForm::lines;
                  // Git also converts files that are still empty.
                  options.reading.emptyInputs = true;
                  options.reading.requireFiles = false;
              }}}};
}

std::string versions() {
    return fmt::format("depcompare {}\nJSON report: version {}\n", DEPCOMPARE_VERSION,
                       jsonReportVersion);
}

OptionGroup otherOptions() {
    // What git appends is not for the parser of options, nor is `--git`.
    return {"Git and help",
            {{.names = "--git",
              .description = "Act as git diff driver or diff tool (must be last)",
              .inShortHelp = true},
             {.names = "-h,--help", .description = "Show a one-screen summary", .shows = shortHelp},
             {.names = "--help-all",
              .description = "List all options",
              .inShortHelp = true,
              .shows = fullHelp},
             {.names = "--version",
              .description = "Show the version",
              .inShortHelp = true,
              .shows = versions}}};
}

constexpr std::string_view introduction = R"(Usage: depcompare [OPTION]... LEFT RIGHT

Compares two dependency graphs, an old and a new state of a project, and shows
what changed. One of the two files may be -, standard input.
)";

constexpr std::string_view examples = R"(
  depcompare old.graphml new.graphml                   read it here
  depcompare -f html -o page.html old.dot new.dot      or in a browser
  depcompare -q old.json new.json || echo changed      or let a script decide

)";

constexpr std::string_view exitStatus = R"(
Exit status: 0 if no difference is visible, 1 if one is, 2 on error.
More: man depcompare
)";

std::string usageOf(const OptionRow& row, const std::string& argument) {
    const bool hasLetter = row.names.find(',') != std::string::npos;
    const std::string names =
        hasLetter ? row.names.substr(0, 3) + ' ' + row.names.substr(3) : "    " + row.names;
    return fmt::format("  {}{}{}", names, argument.empty() ? "" : " ", argument);
}

constexpr std::size_t descriptionColumn = 27;

std::string shortLine(const OptionRow& row) {
    constexpr std::size_t columns = 80;
    std::string line =
        fmt::format("{:<{}}{}", usageOf(row, row.argument), descriptionColumn, row.description);
    for (const std::string& part :
         {row.choices.empty() ? std::string() : fmt::format(": {}", fmt::join(row.choices, ", ")),
          std::string(row.repeats ? "; may be repeated" : "")}) {
        if (line.size() + part.size() <= columns) {
            line += part;
        }
    }
    return line + '\n';
}

std::string fullLine(const OptionRow& row) {
    std::string line = usageOf(
        row, row.choices.empty() ? row.argument : fmt::format("{}", fmt::join(row.choices, "|")));
    if (line.size() + 2 > descriptionColumn) {
        line += '\n';
        line.append(descriptionColumn, ' ');
    } else {
        line.resize(descriptionColumn, ' ');
    }
    line += row.description;
    if (row.repeats) {
        line += "; may be repeated";
    }
    if (!row.byDefault.empty()) {
        line += fmt::format(" [{}]", row.byDefault);
    }
    return line + '\n';
}

}  // namespace

std::vector<OptionGroup> optionTable() {
    return {reportOptions(),    filterOptions(), insightOptions(),    readingOptions(),
            selectingOptions(), limitOptions(),  conversionOptions(), otherOptions()};
}

std::string shortHelp() {
    std::string text = std::string(introduction).append(examples);
    for (const auto& [heading, rows] : optionTable()) {
        for (const OptionRow& row : rows) {
            if (row.inShortHelp) {
                text += shortLine(row);
            }
        }
    }
    return text.append(exitStatus);
}

std::string fullHelp() {
    std::string text(introduction);
    for (const auto& [heading, rows] : optionTable()) {
        text += fmt::format("\n{}:\n", heading);
        for (const OptionRow& row : rows) {
            text += fullLine(row);
        }
    }
    return text.append(exitStatus);
}

}  // namespace depcompare
