#include "cli/command_line.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace depcompare {
namespace {

std::variant<Options, Information> parsed(std::vector<const char*> words) {
    words.insert(words.begin(), "depcompare");
    return parseCommandLine(static_cast<int>(words.size()), words.data());
}

std::string problemWith(const std::vector<const char*>& words) {
    try {
        static_cast<void>(parsed(words));
    } catch (const UsageError& error) {
        return error.what();
    }
    return "";
}

TEST(ParseCommandLine, everyOptionArrives) {
    const auto full = std::get<Options>(parsed(
        {"-f", "text", "--format", "json", "-o", "out", "--no-filter", "l", "--locale", "de_DE",
         "--color=always", "--progress", "never", "-q", "--input-format", "graphml", "r"}));
    EXPECT_EQ(full.inputs, (std::array<std::string, 2>{"l", "r"}));
    EXPECT_EQ(full.format, Format::json);
    EXPECT_EQ(full.outputFile, "out");
    EXPECT_EQ(full.reading.format, "graphml");
    EXPECT_EQ(full.locale, "de_DE");
    EXPECT_EQ(full.colour, When::always);
    EXPECT_EQ(full.progress, When::never);
    EXPECT_TRUE(full.quiet);
}

TEST(ParseCommandLine, furtherReportsAndTheWayOfReadingArrive) {
    const auto options = std::get<Options>(
        parsed({"--report", "html=a=b.html", "l", "--report=json=c", "r", "--max-bytes", "65536",
                "--node-id", "name", "--file-type", "lib", "--file-type=app", "--max-input-bytes",
                "2G", "--max-nesting=9", "--max-nodes", "10", "--max-edges", "20K"}));
    EXPECT_EQ(options.inputs, (std::array<std::string, 2>{"l", "r"}));
    ASSERT_EQ(options.reports.size(), 2U);
    EXPECT_EQ(options.reports[0].format, Format::html);
    EXPECT_EQ(options.reports[0].path, "a=b.html");
    EXPECT_EQ(options.mostBytes, 65536U);
    const ReadOptions& reading = options.reading;
    EXPECT_EQ(reading.nodeID, "name");
    EXPECT_EQ(reading.fileTypes, (std::vector<std::string>{"lib", "app"}));
    EXPECT_EQ(reading.limits.bytes, std::uint64_t{2} << 30U);
    EXPECT_EQ(reading.limits.nestingDepth, 9U);
    EXPECT_EQ(reading.limits.nodes, 10U);
    EXPECT_EQ(reading.limits.edges, 20U << 10U);
}

TEST(ParseCommandLine, filtersStandInTheOrderOfTheirUseAndNoneTwice) {
    const std::pair<std::vector<const char*>, std::vector<std::string_view>> cases[] = {
        {{}, {"nonstructural"}},
        {{"--no-filter"}, {}},
        {{"--filter", "nonstructural"}, {"nonstructural"}},
        {{"--filter=unchanged"}, {"unchanged"}},
        {{"--filter", "nonstructural", "--filter", "unchanged"}, {"unchanged", "nonstructural"}},
        {{"--filter", "unchanged", "--filter", "unchanged"}, {"unchanged"}},
    };
    for (const auto& [options, expected] : cases) {
        std::vector<const char*> words{"l", "r"};
        words.insert(words.end(), options.begin(), options.end());
        std::vector<std::string_view> names;
        const auto chosen = std::get<Options>(parsed(words)).filters;
        for (const Filters& filter : chosen) {
            names.push_back(nameOf(filter));
        }
        EXPECT_EQ(names, expected);
    }
}

TEST(ParseCommandLine, mistakesAreToldInOneLine) {
    const std::pair<std::vector<const char*>, const char*> cases[] = {
        {{}, "LEFT is required"},
        {{"l"}, "RIGHT is required"},
        {{"l", "r", "--nope"}, "The following argument was not expected: --nope"},
        {{"-", "-"}, "only one of the two graphs can come from standard input"},
        {{"-f", "yaml", "l", "r"}, "--format: yaml not in {text,json,html,markdown,summary}"},
        {{"l", "r", "--report", "pdf=a"}, "--report: pdf=a is not a format, = and a file"},
        {{"l", "r", "--report", "json="}, "--report: json= is not a format, = and a file"},
        {{"l", "r", "-o", "a", "--report", "json=a"}, "two reports would go to a"},
        {{"l", "r", "--max-bytes", "10"},
         "--max-bytes: less than 4000 leaves no room for a report"},
        {{"--filter", "x", "l", "r"}, "--filter: x not in {nonstructural,unchanged}"},
        {{"--filter", "unchanged", "--no-filter", "l", "r"}, "--filter excludes --no-filter"},
        {{"--convert", "jgf", "l", "r"}, "--convert and --textconv take one graph"},
        {{"--textconv", "l", "r"}, "--convert and --textconv take one graph"},
        {{"l", "--git", "l", "r"}, "--git has to be the last word before those that git adds"},
        {{"--git", "l", "r", "-q"},
         "--git: 1, 2, 7 or 9 words are what git adds, not 3; --git has to come last"},
        {{"l", "r", "--fail-on", "all"}, "--fail-on: all not in {any,structural,none}"},
        {{"l", "r", "--max-nodes", "0"}, "--max-nodes: Value 0 not in range 1 to 2000000000"},
        {{"l", "r", "--filter"}, "--filter: 1 required nonstructural|unchanged missing"},
    };
    for (const auto& [words, expected] : cases) {
        EXPECT_EQ(problemWith(words), expected);
    }
}

TEST(ParseCommandLine, helpFitsAScreen) {
    const std::string help = std::get<Information>(parsed({"--help"})).text;
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 30);
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

}  // namespace
}  // namespace depcompare
