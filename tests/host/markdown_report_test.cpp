#include "reports/markdown/markdown_report.h"

#include <string>

#include <gtest/gtest.h>

#include "host_texts.h"
#include "reports/markdown/markdown_text.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphML;

std::string markdownOf(const Report& report, std::optional<std::size_t> mostBytes = {}) {
    return test::written([&](Output& output) { writeMarkdownReport(report, mostBytes, output); });
}

std::string manyFiles(std::size_t count) {
    std::string files;
    for (std::size_t i = 0; i < count; ++i) {
        files += "<node id='file" + std::to_string(i) + "'/>";
    }
    return files;
}

std::size_t countOf(const std::string& what, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t i = 0; (i = text.find(what, i)) != text.npos; i += what.size()) {
        ++count;
    }
    return count;
}

TEST(MarkdownReport, countsComeFirstThenWhatWasAddedAndRemovedThenTheRest) {
    const std::string older = graphML(
        "<node id='a'><data key='k'>1</data></node><node id='b'/>"
        "<edge source='a' target='b'/><edge source='a' target='a'/>");
    const std::string newer = graphML(
        "<node id='a'><data key='k'>2</data></node><node id='c'/>"
        "<node id='x'><data key='type'>lib</data></node>"
        "<edge source='a' target='x'><data key='type'>use</data></edge>"
        "<edge source='a' target='a'><data key='upstream_component'>f</data></edge>"
        "<edge source='a' target='c'/>"
        "<edge source='a' target='c'><data key='upstream_component'>f</data></edge>");
    const std::string expected =
        "### Dependencies: `old` \u2192 `new`\n\n"
        "| | added | removed | changed | unchanged |\n"
        "|---|--:|--:|--:|--:|\n"
        "| Files | 1 | 1 | 1 | 0 |\n"
        "| Groups | 2 | 1 | 1 | 0 |\n"
        "| Dependencies | 4 | 2 | 0 | 0 |\n"
        "| File properties | 0 | 0 | 1 | 0 |\n"
        "| Graph properties | 0 | 0 | 0 | 0 |\n\n"
        "<details open><summary>Added files: 1</summary>\n\n- `c`\n\n</details>\n\n"
        "<details open><summary>Removed files: 1</summary>\n\n- `b`\n\n</details>\n\n"
        "<details open><summary>Added groups of dependencies: 2</summary>\n\n"
        "- `a` \u2192 `c`: 2 \u00d7 `depends`\n- `a` \u2192 `x` (`lib`): `use`\n\n</details>\n\n"
        "<details open><summary>Removed groups of dependencies: 1</summary>\n\n"
        "- `a` \u2192 `b`: `depends`\n\n</details>\n\n";
    const std::string rows =
        "- `a` \u2192 `a`\n  - removed `depends`\n  - added `depends` `f`\n\n</details>\n\n";
    EXPECT_EQ(markdownOf(compare(older, newer)),
              expected + "<details open><summary>Changed: 2</summary>\n\n" +
                  "- `a`\n  - changed `k`: `1` \u2192 `2`\n" + rows);
    EXPECT_EQ(markdownOf(compare(older, newer, filtersNamed({"nonstructural"}))),
              expected + "<details open><summary>Changed: 1</summary>\n\n" + rows +
                  "Hidden by the non-structural filter: 2 entries, 1 row.\n\n");
    EXPECT_NE(markdownOf(compare(older, older)).find("\nNo differences.\n"), std::string::npos);
}

TEST(MarkdownReport, theLimitHoldsAndTheEndSaysWhatIsMissing) {
    const Report report = compare(graphML(""), graphML(manyFiles(2000)));
    const std::string whole = markdownOf(report);
    EXPECT_EQ(countOf("\n- ", whole), 2000U);
    EXPECT_EQ(whole.find("Cut"), std::string::npos);
    EXPECT_NE(whole.find("<details><summary>Added files: 2000<"), std::string::npos);
    for (const std::size_t limit : {fewestMarkdownBytes, std::size_t{5001}, whole.size() - 1}) {
        const std::string cut = markdownOf(report, limit);
        EXPECT_LE(cut.size(), limit);
        const std::size_t shown = countOf("\n- ", cut);
        EXPECT_GT(shown, 50U);
        const std::string ending =
            "</details>\n\n**Cut for length.** Left out: " + std::to_string(2000 - shown) +
            " added files.\n";
        EXPECT_TRUE(cut.ends_with(ending)) << cut.substr(cut.size() - 100);
    }
    EXPECT_EQ(markdownOf(report, whole.size() + 2000), whole);
}

TEST(MarkdownReport, theSmallestLimitHoldsForTheLongestNames) {
    const std::string ticks(5000, '`');
    Report report = compare(graphML(""), graphML("<node id='" + ticks + "'/>" + manyFiles(900)));
    report.inputs[0].source = report.inputs[1].source = ticks;
    EXPECT_LE(markdownOf(report, fewestMarkdownBytes).size(), fewestMarkdownBytes);
}

TEST(MarkdownCode, nothingOfItIsMarkup) {
    const std::pair<std::u16string, std::string> cases[] = {
        {u"<b>|*@me", "`<b>|*@me`"}, {u"a`b``c", "```a`b``c```"},       {u"`a", "`` `a ``"},
        {u" a ", "`  a  `"},         {u"a\nb\u202e", "`a\\nb\\u202e`"}, {u"", "_empty_"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(markdownCode(text), expected);
    }
    EXPECT_LT(markdownCode(std::u16string(100000, u'\u0301')).size(), 700U);
}

}  // namespace
}  // namespace depcompare
