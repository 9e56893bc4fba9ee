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
