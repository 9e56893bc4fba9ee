#include "presentation/ledger.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host_texts.h"

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
    EXPECT_EQ(visibility.entries, (::comparisons::RowCount{.all = 3, .visible = 0}));
    EXPECT_EQ(visibility.rows, (::comparisons::RowCount{.all = 2, .visible = 0}));
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
         {&LoadedGraph::nodes, &LoadedGraph::files, &LoadedGraph::dependencies}) {
        Inputs inputs = report.inputs;
        ++(inputs[1].*count);
        EXPECT_THROW((void)makeReport(inputs, {}, {}), LedgerError);
    }
}

}  // namespace
}  // namespace depcompare
