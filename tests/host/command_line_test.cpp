#include "command_line.h"

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
    const auto plain = std::get<Options>(parsed({"l", "-"}));
    EXPECT_EQ(plain.inputs, (std::array<std::string, 2>{"l", "-"}));
    EXPECT_EQ(plain.format, Format::text);
    EXPECT_EQ(plain.inputFormat, "auto");
    EXPECT_FALSE(plain.outputFile || plain.locale || plain.quiet);

    const auto full = std::get<Options>(parsed(
        {"-f", "text", "--format", "json", "-o", "out", "--no-filter", "l", "--locale", "de_DE",
         "--color=always", "--progress", "never", "-q", "--input-format", "graphml", "r"}));
    EXPECT_EQ(full.inputs, (std::array<std::string, 2>{"l", "r"}));
    EXPECT_EQ(full.format, Format::json);
    EXPECT_EQ(full.outputFile, "out");
    EXPECT_EQ(full.inputFormat, "graphml");
    EXPECT_EQ(full.locale, "de_DE");
    EXPECT_EQ(full.colour, When::always);
    EXPECT_EQ(full.progress, When::never);
    EXPECT_TRUE(full.quiet);
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
        {{"l", "r", "x"}, "The following argument was not expected: x"},
        {{"l", "r", "--nope"}, "The following argument was not expected: --nope"},
        {{"-", "-"}, "only one of the two graphs can come from standard input"},
        {{"-f", "yaml", "l", "r"}, "--format: yaml not in {text,json,html,markdown,summary}"},
        {{"--filter", "x", "l", "r"}, "--filter: x not in {nonstructural,unchanged}"},
        {{"--filter", "unchanged", "--no-filter", "l", "r"}, "--filter excludes --no-filter"},
        {{"-f", "html", "l", "r"}, "--format html: not available yet"},
        {{"--no-filter", "l", "r", "--filter=nonstructural"}, "--filter excludes --no-filter"},
        {{"l", "r", "--filter"}, "--filter: 1 required nonstructural|unchanged missing"},
    };
    for (const auto& [words, expected] : cases) {
        EXPECT_EQ(problemWith(words), expected);
    }
}

TEST(ParseCommandLine, helpAndVersionNeedNoGraphs) {
    EXPECT_NE(std::get<Information>(parsed({"--help"})).text.find("LEFT RIGHT"), std::string::npos);
    EXPECT_EQ(std::get<Information>(parsed({"--version"})).text.substr(0, 11), "depcompare ");
}

}  // namespace
}  // namespace depcompare
