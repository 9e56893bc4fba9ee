#include "reports/markdown/markdown_report.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;

std::string markdownOf(const Report& report, std::size_t mostBytes = mostMarkdownBytes) {
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

/// Returns: the text without its code spans, by the rules of CommonMark.
std::string withoutCode(const std::string& markdown) {
    constexpr std::size_t longestFence = 80;
    std::string rest;
    for (std::size_t begin = 0, next = 0; begin < markdown.size(); begin = next) {
        const auto endOfRun = [&](std::size_t run) {
            return std::min(markdown.find_first_not_of('`', run), markdown.size());
        };
        next = std::max(endOfRun(begin), begin + 1);
        const std::size_t length = endOfRun(begin) - begin;
        std::size_t close = length == 0 || length > longestFence ? markdown.npos : next;
        while (close < markdown.size() && endOfRun(close) - close != length) {
            close = markdown.find('`', std::max(endOfRun(close), close + 1));
        }
        if (close < markdown.size()) {
            next = close + length;
        } else {
            rest += markdown.substr(begin, next - begin);
        }
    }
    return rest;
}

TEST(MarkdownReport, countsComeFirstThenGroupsBetweenNodesThatStayThenTheRestByFolder) {
    const std::string older = graphOf(
        "s/a k=1; s/b; s/c; x type=lib name=A; y type=lib; w type=lib; s/a>s/b; s/a>s/a; s/a>x; "
        "s/a>y;"
        "s/a>w; s/c>s/a; s/c>x upstream_component=1; s/c>w; s/b>x");
    const std::string newer = graphOf(
        "s/a k=2; t/b k=1; s/c; x type=lib name=Z; y type=lib; z type=lib; s/a>x; s/a>y; s/a>z "
        "type=use;"
        "s/a>s/a upstream_component=f; s/a>t/b; s/a>t/b upstream_component=f; s/a>s/c;"
        "s/c>y; s/c>x upstream_component=2; t/b>x; t/b>z");
    const std::string head =
        "### Dependencies: `old` \u2192 `new`\n"
        "\n"
        "The structure changed.\n"
        "\n"
        "| | added | removed | changed | unchanged |\n"
        "|---|--:|--:|--:|--:|\n"
        "| Files | 1 | 1 | 1 | 1 |\n"
        "| Groups | 6 | 5 | 3 | 1 |\n"
        "| Dependencies | 9 | 7 | 0 | 2 |\n"
        "| File properties | 1 | 0 | 1 | 0 |\n"
        "| Graph properties | 0 | 0 | 0 | 0 |\n"
        "\n";
    const std::string atLarge =
        "**Areas**\n"
        "\n"
        "- added `s` \u2192 `t` (1)\n"
        "\n"
        "**Other nodes**\n"
        "\n"
        "- 1 new, 1 gone\n"
        "- added `z` (2 files)\n"
        "- removed `w` (2 files)\n"
        "\n"
        "**Cycles**\n"
        "\n"
        "- 1, as before\n"
        "\n"
        "<details><summary>More at large</summary>\n"
        "\n"
        "**Files in**\n"
        "\n"
        "- `s` -1\n"
        "- `t` +1\n"
        "\n"
        "**Reach**\n"
        "\n"
        "- 10 \u2192 9 pairs of file and node, 67 % \u2192 60 % of all\n"
        "- added `s/a` \u2192 `t/b`: 1 file gains 2\n"
        "- added `s/a` \u2192 `s/c`: 1 file gains 1\n"
        "- added `s/a` \u2192 `z`: 1 file gains 1\n"
        "\n"
        "- `s/a`: 4 \u2192 5, first by `s/a` \u2192 `s/c`\n"
        "- `s/c`: 5 \u2192 2\n"
        "\n"
        "**Renames**\n"
        "\n"
        "- 1 probable\n"
        "- `s/b` \u2192 `t/b`: 0.89, equal name, 2 of 3 neighbours\n"
        "\n"
        "**Groups**\n"
        "\n"
        "- +6: 2 rewired, 1 of new files, 1 to new nodes, 2 renamed\n"
        "- -5: 1 rewired, 2 to gone nodes, 2 renamed\n"
        "- ~3: 2 in components only, 1 in an end only\n"
        "\n"
        "</details>\n"
        "\n";
    const std::string groups =
        "<details open><summary>Added groups between nodes of both sides: 2</summary>\n"
        "\n"
        "- `s/a` \u2192 `s/c`: `depends`\n"
        "- `s/c` \u2192 `y` (`lib`): `depends`\n"
        "\n"
        "</details>\n"
        "\n"
        "<details open><summary>Removed groups between nodes of both sides: 1</summary>\n"
        "\n"
        "- `s/c` \u2192 `s/a`: `depends`\n"
        "\n"
        "</details>\n"
        "\n"
        "<details open><summary>Removed groups that led to removed nodes: 3</summary>\n"
        "\n"
        "- `s/a` \u2192 `s/b`: `depends`\n"
        "- `s/a` \u2192 `w` (`lib`): `depends`\n"
        "- `s/c` \u2192 `w` (`lib`): `depends`\n"
        "\n"
        "</details>\n"
        "\n";
    const Report report = compare(older, newer, filtersNamed({"nonstructural"}));
    EXPECT_EQ(
        markdownOf(report),
        head + atLarge + groups +
            "<details open><summary>By folder: 1 added file, 1 removed file, 4 added groups, 1 "
            "removed group, 1 changed group, 1 group in which only components differ</summary>\n"
            "\n"
            "**`s`**: 1 removed file, 2 added groups, 1 removed group, 1 changed group, 1 group in "
            "which only components differ\n"
            "\n"
            "- `s/a`\n"
            "  - added `t/b`: 2 \u00d7 `depends`\n"
            "  - added `z` (`lib`): `use`\n"
            "  - 1 group in which only components differ\n"
            "- removed `s/b`\n"
            "  - `x` (`lib`): `depends`\n"
            "- `s/c`\n"
            "  - changed `x` (`lib`)\n"
            "    - removed `depends` `1`\n"
            "    - added `depends` `2`\n"
            "\n"
            "**`t`**: 1 added file, 2 added groups\n"
            "\n"
            "- added `t/b`\n"
            "  - `x` (`lib`): `depends`\n"
            "  - `z` (`lib`): `depends`\n"
            "\n"
            "</details>\n"
            "\n"
            "Hidden by the non-structural filter: 1 file, 1 group, 1 row.\n"
            "\n");
    Report withoutInsights = compare(older, newer);
    withoutInsights.insights.reset();
    const std::string shown = markdownOf(withoutInsights);
    EXPECT_TRUE(shown.starts_with(
        head + groups +
        "<details open><summary>By folder: 1 added file, 1 removed file, 1 changed file, "
        "4 added groups, 1 removed group, 3 changed groups</summary>\n"
        "\n"
        "**`s`**: 1 removed file, 1 changed file, 2 added groups, 1 removed group, 3 "
        "changed groups\n"
        "\n"
        "- changed `s/a`\n"
        "  - changed `k`: `1` \u2192 `2`\n"
        "  - changed `s/a`\n"
        "    - removed `depends`\n"
        "    - added `depends` `f`\n"
        "  - added `t/b`: 2 \u00d7 `depends`\n"
        "  - changed `x` (`lib`, name or type of an end changed)\n"))
        << shown;
    EXPECT_NE(markdownOf(compare(older, older)).find("\nNo differences.\n"), std::string::npos);
}

TEST(MarkdownReport, theLimitHoldsAndTheEndSaysWhatIsMissing) {
    const Report report = compare(graphOf(""), graphOf(manyFiles(2000)));
    const std::string whole = markdownOf(report);
    EXPECT_EQ(countOf("\n- ", whole), 2000U);
    EXPECT_EQ(whole.find("Cut"), std::string::npos);
    EXPECT_NE(whole.find("<details><summary>By folder: 2000 added files<"), std::string::npos);
    for (const std::size_t limit : {fewestMarkdownBytes, std::size_t{5001}, whole.size() - 1}) {
        const std::string cut = markdownOf(report, limit);
        EXPECT_LE(cut.size(), limit);
        const std::size_t shown = countOf("\n- ", cut);
        EXPECT_GT(shown, 50U);
        EXPECT_TRUE(cut.ends_with("</details>\n\n**Cut for length.** Not shown: " +
                                  std::to_string(2000 - shown) + " files.\n"))
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

TEST(MarkdownReport, noTextOfAGraphIsOutsideOfCode) {
    for (const std::string& mark : {std::string("@me|[l](u)"), "`@" + std::string(79, '`') + "@me",
                                    std::string(81, '`') + "@"}) {
        const auto graph = [&](std::string parts) {
            for (std::size_t at = 0; (at = parts.find('!', at)) != parts.npos; at += mark.size()) {
                parts.replace(at, 1, mark);
            }
            return graphOf(parts);
        };
        const std::string older = graph(
            "@ !=1!; a/! !=1!; b/!; c/d/!; x! type=t! name=n!; w! type=t!; a/!>b/!; a/!>w!;"
            "c/d/!>x!; a/!>x! type=t! upstream_component=u!");
        const std::string newer = graph(
            "@ !=2!; a/! !=2!; b/!; e/d/!; x! type=t! name=m!; z! type=t!; b/!>a/!; a/!>b/!;"
            "e/d/!>x!; a/!>x! type=s! upstream_component=v!; a/!>z!; b/!>x!");
        Report full = compare(older, newer);
        for (LoadedGraph& input : full.inputs) {
            input.source = mark;
        }
        full.ledger.sides[0].warnings = {mark};
        for (const std::string& shown :
             {markdownOf(full),
              markdownOf(compare(older, newer, filtersNamed({"nonstructural"})))}) {
            EXPECT_NE(shown.find('@'), std::string::npos);
            EXPECT_EQ(withoutCode(shown).find_first_of("@`"), std::string::npos)
                << withoutCode(shown) << shown;
        }
    }
}

}  // namespace
}  // namespace depcompare
