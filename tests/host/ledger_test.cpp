#include "presentation/ledger.h"

#include <functional>
#include <string>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"
#include "presentation/ledger_text.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;
using testing::ThrowsMessage;

// Edges of `a` to `b` share a pairing key in pairs; `x` is not a file, and has an edge itself.
constexpr const char* oldFile =
    "a; b; x type=lib; y type=tool; a>b; a>b; a>b upstream_component=f;"
    "a>b downstream_component=f; a>b type=use; x>b";
constexpr const char* newFile = "a k=1; b; b>a";

TEST(Ledger, whatTwoFiltersHideIsCountedForTheFirst) {
    const Report report = compare(graphOf("a k=1 l=1; b"), graphOf("a k=2 l=1; b"),
                                  filtersNamed({"unchanged", "nonstructural"}));
    // Graph and `b` are equal, and so is one row of `a`; the rest of `a` is not structural.
    const Visibility& visibility = report.ledger.visibility;
    EXPECT_EQ(visibility.hidden[0].entries.graphs, 1U);
    EXPECT_EQ(visibility.hidden[0].entries.files, 1U);
    EXPECT_EQ(visibility.hidden[0].rows, 1U);
    EXPECT_EQ(visibility.hidden[1].entries.files, 1U);
    EXPECT_EQ(visibility.hidden[1].rows, 1U);
    // Only the second one hides differences.
    EXPECT_EQ(visibility.hidden[0].differingEntries.all() + visibility.hidden[0].differingRows, 0U);
    EXPECT_EQ(visibility.hidden[1].differingEntries.files, 1U);
    EXPECT_EQ(visibility.hidden[1].differingRows, 1U);
    EXPECT_EQ(visibility.entries, (::comparisons::RowCount{.all = 3, .visible = 0}));
    EXPECT_EQ(visibility.rows, (::comparisons::RowCount{.all = 2, .visible = 0}));
}

TEST(Ledger, filesThatHardlyMeetAreWarnedOf) {
    const std::tuple<const char*, const char*, std::string> cases[] = {
        {"a; b; c; d; e", "x/a; x/b; x/c; x/d; x/e; f", "(0 of 5)"},
        {"a; b; c; d; e", "a; x/b; x/c; x/d; x/e", ""},
        {"a; b; c; d", "x/a; x/b; x/c; x/d", ""}};
    for (const auto& [left, right, expected] : cases) {
        const Report report = compare(graphOf(left), graphOf(right));
        const std::string text = test::textOf(report);
        EXPECT_EQ(text.find("Warning: hardly any file is in both graphs " + expected) != text.npos,
                  !expected.empty())
            << text;
        EXPECT_EQ(test::jsonOf(report)["ledger"]["warnings"].size(), expected.empty() ? 0U : 1U);
    }
}

TEST(Ledger, addsUpWithEveryOption) {
    const std::pair<Selection, std::string> cases[] = {
        {{},
         "4 nodes: 2 files, 1 lib, 1 tool; 6 dependencies: 3 compared, 2 duplicates, "
         "1 leaving non-file nodes; "},
        {{.only = {"a"}},
         "4 nodes: 2 files, 2 left out; 6 dependencies: 3 compared, 2 duplicates, 1 left out; "},
        {{.only = {"[xy]"}},
         "4 nodes: 1 file, 1 lib, 1 tool, 1 left out; 6 dependencies: "
         "0 compared, 1 leaving non-file nodes, 5 left out; "},
        {{.exclude = {"b"}},
         "4 nodes: 1 file, 1 lib, 1 tool, 1 left out; 6 dependencies: "
         "0 compared, 6 left out; "},
        {{.only = {"a"}, .exclude = {"b*", "y"}},
         "4 nodes: 1 file, 3 left out; 6 dependencies: 0 compared, 6 left out; "},
        {{.ignoredProperties = {"k*", "type"}},
         "4 nodes: 2 files, 1 lib, 1 tool; 6 dependencies: 3 compared, 2 duplicates, "
         "1 leaving non-file nodes; Left out: 2 properties"},
        {{.ignoredComponents = {"*"}},
         "4 nodes: 2 files, 1 lib, 1 tool; 6 dependencies: 2 compared, 3 duplicates, "
         "1 leaving non-file nodes; Left out: 2 components"},
    };
    for (const auto& [selection, expected] : cases) {
        const Report report = compare(graphOf("@ kind=7; a k1=2;" + std::string(oldFile + 2)),
                                      graphOf(newFile), {}, {.selection = selection});
        const SideLedger& side = report.ledger.sides[0];
        EXPECT_EQ(nodesLine(side) + "; " + dependenciesLine(side) + "; " +
                      leftOutLine(side, LeftOutParts::others),
                  expected);
    }
}

TEST(Ledger, ofABillOfMaterialsCountsWhatChangesWithEveryBuild) {
    const auto bom = [](const std::string& id) {
        return R"({"bomFormat": "CycloneDX", "serialNumber": ")" + id +
               R"(", "metadata": {"timestamp": "2024-05-06", "tools": [")" + id + R"("]},
                  "components": [{"name": "a"}]})";
    };
    const Report report = compare(bom("1"), bom("2"));
    EXPECT_EQ(report.verdict(), "No differences.");
    EXPECT_EQ(leftOutLine(report.ledger.sides[1], LeftOutParts::all),
              "Left out: 3 properties of the build");
    EXPECT_EQ(compare(bom("1"), bom("2"), {}, {.selection = {.keepsBuildData = true}})
                  .summary.graphProperties.changed,
              2U);
}

TEST(Ledger, whatIsDroppedOrCountedTwiceIsNoticed) {
    const Report report = compare(graphOf(oldFile), graphOf(newFile), filtersNamed({"unchanged"}));
    const std::pair<const char*, std::function<void(Ledger&)>> cases[] = {
        {"left nodes", [](Ledger& l) { l.sides[0].otherNodes.erase(u"tool"); }},
        {"right nodes", [](Ledger& l) { ++l.sides[1].files; }},
        {"left files", [](Ledger& l) { --l.sides[0].comparedFiles; }},
        {"left dependencies", [](Ledger& l) { --l.sides[0].folded; }},
        {"right dependencies", [](Ledger& l) { ++l.sides[1].compared; }},
        {"entries", [](Ledger& l) { ++l.visibility.hidden[0].entries.groups; }},
        {"rows", [](Ledger& l) { ++l.rows; }},
    };
    for (const auto& [what, spoil] : cases) {
        Ledger ledger = report.ledger;
        spoil(ledger);
        EXPECT_THAT([&] { checkLedger(ledger); },
                    ThrowsMessage<LedgerError>(testing::HasSubstr(what)));
    }
    // As if the readers had counted one more than the comparison was given.
    for (std::size_t LoadedGraph::*count :
         {&LoadedGraph::nodesRead, &LoadedGraph::files, &LoadedGraph::dependenciesRead}) {
        Inputs inputs = report.inputs;
        ++(inputs[1].*count);
        EXPECT_THROW((void)makeReport(inputs, {}, {}), LedgerError);
    }
}

}  // namespace
}  // namespace depcompare
