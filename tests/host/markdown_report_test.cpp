#include "reports/markdown/markdown_report.h"

#include <string>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;

std::string markdownOf(const Report& report, std::optional<std::size_t> mostBytes = {}) {
    return test::written([&](Output& output) { writeMarkdownReport(report, mostBytes, output); });
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string manyFiles(std::size_t count) {
    std::string files;
    for (std::size_t i = 0; i < count; ++i) {
        files += "file" + std::to_string(i) + ";";
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
    const std::string older =
        graphOf("a k=1; b; x type=lib name=A; y type=lib; w type=lib; a>b; a>a; a>x; a>y; a>w");
    const std::string newer = graphOf(
        "a k=2; c; x type=lib name=Z; y type=lib; w type=lib; z type=lib; a>x; a>y; a>w; a>z "
        "type=use;"
        "a>a upstream_component=f; a>c; a>c upstream_component=f");
    const std::string expected =
        "### Dependencies: `old` \u2192 `new`\n\n"
        "| | added | removed | changed | unchanged |\n"
        "|---|--:|--:|--:|--:|\n"
        "| Files | 1 | 1 | 1 | 0 |\n"
        "| Groups | 2 | 1 | 2 | 2 |\n"
        "| Dependencies | 4 | 2 | 0 | 3 |\n"
        "| File properties | 0 | 0 | 1 | 0 |\n"
        "| Graph properties | 0 | 0 | 0 | 0 |\n\n"
        "<details open><summary>Added files: 1</summary>\n\n- `c`\n\n</details>\n\n"
        "<details open><summary>Removed files: 1</summary>\n\n- `b`\n\n</details>\n\n"
        "<details open><summary>Added groups of dependencies: 2</summary>\n\n"
        "- `a` \u2192 `c`: 2 \u00d7 `depends`\n- `a` \u2192 `z` (`lib`): `use`\n\n</details>\n\n"
        "<details open><summary>Removed groups of dependencies: 1</summary>\n\n"
        "- `a` \u2192 `b`: `depends`\n\n</details>\n\n";
    const std::string rows = "- `a` \u2192 `a`\n  - removed `depends`\n  - added `depends` `f`\n";
    EXPECT_EQ(markdownOf(compare(older, newer)),
              expected + "<details open><summary>Changed: 3</summary>\n\n" +
                  "- `a`\n  - changed `k`: `1` \u2192 `2`\n" + rows +
                  "- `a` \u2192 `x` (`lib`, name or type of an end changed, moved)\n\n"
                  "</details>\n\n");
    EXPECT_EQ(markdownOf(compare(older, newer, filtersNamed({"nonstructural"}))),
              expected + "<details open><summary>Changed: 1</summary>\n\n" + rows +
                  "\n</details>\n\n"
                  "Hidden by the non-structural filter: the graph, 1 file, 3 groups, 4 rows.\n\n");
    EXPECT_NE(markdownOf(compare(older, older)).find("\nNo differences.\n"), std::string::npos);
}

TEST(MarkdownReport, theLimitHoldsAndTheEndSaysWhatIsMissing) {
    const Report report = compare(graphOf(""), graphOf(manyFiles(2000)));
    const std::string whole = markdownOf(report);
    EXPECT_EQ(countOf("\n- ", whole), 2000U);
    EXPECT_EQ(whole.find("Cut"), std::string::npos);
    EXPECT_NE(whole.find("<details><summary>Added files: 2000<"), std::string::npos);
    for (const std::size_t limit : {fewestMarkdownBytes, std::size_t{5001}, whole.size() - 1}) {
        const std::string cut = markdownOf(report, limit);
        EXPECT_LE(cut.size(), limit);
        const std::size_t shown = countOf("\n- ", cut);
        EXPECT_GT(shown, 50U);
        EXPECT_TRUE(cut.ends_with("</details>\n\n**Cut for length.** Left out: " +
                                  std::to_string(2000 - shown) + " added files.\n"))
            << cut.substr(cut.size() - 100);
    }
    EXPECT_EQ(markdownOf(report, whole.size() + 2000), whole);

    const std::string ticks(5000, '`');
    Report longNames = compare(graphOf(""), graphOf(ticks + ";" + manyFiles(900)));
    longNames.inputs[0].source = longNames.inputs[1].source = ticks;
    EXPECT_LE(markdownOf(longNames, fewestMarkdownBytes).size(), fewestMarkdownBytes);
}

TEST(MarkdownReport, nothingInANameIsMarkup) {
    const std::pair<std::string, std::string> cases[] = {
        {"&lt;b>|*@me", "`<b>|*@me`"},
        {"a`b``c", "```a`b``c```"},
        {"`a", "`` `a ``"},
        {" a ", "`  a  `"},
        {"a&#10;b\u202e", "`a\\nb\\u202e`"},  // NOLINT(misc-misleading-bidirectional)
        {std::string(15, '`'),
         std::string(16, '`') + ' ' + std::string(15, '`') + ' ' + std::string(16, '`')},
        {"a" + std::string(16, '`'), "`a" + repeated("\\x60", 16) + '`'},
        {repeated("\u0301", 100000), "`...`"},
        {"", "_empty_"},
    };
    for (const auto& [text, expected] : cases) {
        const std::string file =
            test::graphML("<node id='a'><data key='k'>" + text + "</data></node>");
        const std::string shown = markdownOf(compare(test::graphML("<node id='a'/>"), file));
        EXPECT_NE(shown.find("  - added `k`: " + expected + "\n"), std::string::npos) << shown;
    }
}

}  // namespace
}  // namespace depcompare
