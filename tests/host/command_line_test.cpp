#include "cli/command_line.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace depcompare {
namespace {

/// Parses words that are separated by spaces.
std::variant<Options, Information> parsed(const std::string& line) {
    std::istringstream text("depcompare " + line);
    std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    std::vector<const char*> pointers;
    pointers.reserve(words.size());
    for (const std::string& word : words) {
        pointers.push_back(word.c_str());
    }
    return parseCommandLine(static_cast<int>(pointers.size()), pointers.data());
}

std::string problemWith(const std::string& line) {
    try {
        static_cast<void>(parsed(line));
    } catch (const UsageError& error) {
        return error.what();
    }
    return "";
}

/// Returns: what the command line asks for, apart from defaults.
std::string textOf(const Options& options) {
    const Options defaults;
    const ReadOptions& reading = options.reading;
    std::string text = fmt::format("{}", fmt::join(options.inputs, " "));
    const auto tell = [&](const char* name, const auto& value, const auto& byDefault) {
        if (value != byDefault) {
            text += fmt::format(" {}={}", name, value);
        }
    };
    if (options.names != options.inputs) {
        text += fmt::format(" names={}", fmt::join(options.names, ","));
    }
    tell("format", static_cast<int>(options.format), static_cast<int>(defaults.format));
    tell("output", options.outputFile.value_or(""), "");
    for (const FurtherReport& report : options.reports) {
        text += fmt::format(" report={}:{}", static_cast<int>(report.format), report.path);
    }
    tell("most", options.mostBytes.value_or(0), 0U);
    std::vector<std::string_view> filters;
    std::ranges::transform(options.filters, std::back_inserter(filters), nameOf);
    text += fmt::format(" [{}]", fmt::join(filters, ","));
    tell("input", reading.format, "auto");
    tell("node-id", reading.nodeID, "auto");
    tell("types", fmt::format("{}", fmt::join(reading.fileTypes, ",")), "");
    const auto& [only, exclude, properties, components, keepsBuildData] = reading.selection;
    for (const auto* globs : {&only, &exclude, &properties, &components}) {
        tell("globs", fmt::format("{}", fmt::join(*globs, ",")), "");
    }
    tell("keeps", keepsBuildData, false);
    tell("prefixes", fmt::format("{}", fmt::join(reading.idEdits.prefixes, ",")), "");
    tell("bare", reading.idEdits.withoutVersion, false);
    tell("edits", reading.idEdits.replacements.size(), 0U);
    tell("empty", reading.emptyInputs, false);
    tell("bytes", reading.limits.bytes, defaults.reading.limits.bytes);
    tell("nodes", reading.limits.nodes, defaults.reading.limits.nodes);
    tell("edges", reading.limits.edges, defaults.reading.limits.edges);
    tell("text", reading.limits.textBytes, defaults.reading.limits.textBytes);
    tell("depth", reading.limits.nestingDepth, defaults.reading.limits.nestingDepth);
    tell("convert", options.conversion ? static_cast<int>(*options.conversion) : -1, -1);
    tell("fail", static_cast<int>(options.failOn), static_cast<int>(defaults.failOn));
    tell("locale", options.locale.value_or(""), "");
    tell("colour", static_cast<int>(options.colour), 0);
    tell("progress", static_cast<int>(options.progress), 0);
    tell("quiet", options.quiet, false);
    tell("pager", options.pager, true);
    return text;
}

TEST(ParseCommandLine, everyOptionArrives) {
    const std::pair<const char*, const char*> cases[] = {
        {"l r", "l r [nonstructural]"},
        {"-f text --format json -o out l --report html=a=b.html r --report=json=c --max-bytes "
         "65536",
         "l r format=1 output=out report=2:a=b.html report=1:c most=65536 [nonstructural]"},
        {"l r --locale de_DE --color=always --progress never --no-pager -q --fail-on structural",
         "l r [nonstructural] fail=1 locale=de_DE colour=1 progress=2 quiet=true pager=false"},
        {"l r --no-filter", "l r []"},
        {"l r --filter=unchanged", "l r [unchanged]"},
        {"--filter nonstructural --filter unchanged l r --filter unchanged",
         "l r [unchanged,nonstructural]"},
        {"--input-format graphml --node-id name --file-type lib l r --file-type=app",
         "l r [nonstructural] input=graphml node-id=name types=lib,app"},
        {"l r --max-input-bytes 2G --max-nodes 10 --max-edges 20K --max-text-bytes 16 "
         "--max-nesting=9",
         "l r [nonstructural] bytes=2147483648 nodes=10 edges=20480 text=16 depth=9"},
        {"l r --only a --only b --exclude c --ignore-property d --ignore-component e "
         "--keep-build-data --strip-prefix f --strip-version --id-replace s/a/b/ --id-replace "
         "s,c,,g",
         "l r [nonstructural] globs=a,b globs=c globs=d globs=e keeps=true prefixes=f bare=true "
         "edits=2"},
        {"--convert jgf l", "l  [nonstructural] keeps=true convert=0"},
        {"--textconv l", "l  [nonstructural] empty=true convert=1"},
        {"-q --git l -q", "l -q [nonstructural] empty=true fail=2 quiet=true"},
        {"--fail-on any --git path old 1 2 new 3 4",
         "old new names=a/path,b/path [nonstructural] empty=true pager=false"},
        {"--git path - 1 2 /dev/null 3 4 moved how",
         "./- /dev/null names=a/path,/dev/null [nonstructural] empty=true fail=2 pager=false"},
        {"--git path old 1 2 new 3 4 moved how",
         "old new names=a/path,b/moved [nonstructural] empty=true fail=2 pager=false"},
    };
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(textOf(std::get<Options>(parsed(line))), expected) << line;
    }
    EXPECT_EQ(std::get<Information>(parsed("--git a")).text, "* Unmerged path a\n");
}

TEST(ParseCommandLine, mistakesAreToldInOneLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "two graphs are needed, the old and the new one; --help says more"},
        {"l", "two graphs are needed, the old and the new one; --help says more"},
        {"--nop=a l r x", "there is no option \"--nop\"; --help lists all"},
        {"l r x", "\"x\" is one graph too many: \"l\" and \"r\" are compared"},
        {"- -", "only one of the two graphs can come from standard input"},
        {"-f yaml l r",
         "--format: \"yaml\" is none of text, json, html, markdown, summary, csv, tsv"},
        {"l r --report pdf=a", "--report: pdf=a is not FORMAT=FILE"},
        {"l r --report json=", "--report: json= is not FORMAT=FILE"},
        {"l r --report json", "--report: json is not FORMAT=FILE"},
        {"l r -o a --report json=a", "two reports would be written to a"},
        {"l r --max-bytes 10", "--max-bytes: Value 10 not in range 4000 to 1125899906842624"},
        {"--filter x l r", "--filter: \"x\" is none of nonstructural, unchanged"},
        {"--filter unchanged --no-filter l r", "--filter excludes --no-filter"},
        {"--convert jgf --textconv l", "--convert excludes --textconv"},
        {"--convert jgf l r", "--convert and --textconv take one graph"},
        {"--textconv l r", "--convert and --textconv take one graph"},
        {"l --git l r", "--git must be the last option, followed only by what git appends"},
        {"--git l r -q",
         "--git: expected 1, 2, 7 or 9 arguments from git, got 3; --git must be the last option"},
        {"l r --fail-on all", "--fail-on: \"all\" is none of any, structural, cycles, none"},
        {"l r --max-nodes 0", "--max-nodes: Value 0 not in range 1 to 2000000000"},
        {"l r --id-replace s/a/b", "--id-replace s/a/b: not s/PATTERN/TEXT/"},
        {"l r --id-replace a", "--id-replace a: not s/PATTERN/TEXT/"},
        {"l r --id-replace s/a/b/x",
         "--id-replace s/a/b/x: after s/PATTERN/TEXT/ there may be g and i only"},
        {"l r --id-replace s/(/b/", "--id-replace s/(/b/: missing ): ("},
        {"l r --id-replace s/a/\\1/",
         "--id-replace s/a/\\1/: Rewrite schema requests 1 matches, but the regexp only has 0 "
         "parenthesized subexpressions."},
        {"l r --filter", "--filter: 1 required NAME missing"},
    };
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(problemWith(line), expected);
    }
}

TEST(ParseCommandLine, helpFitsAScreen) {
    const std::string help = std::get<Information>(parsed("--help")).text;
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 30);
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

}  // namespace
}  // namespace depcompare
