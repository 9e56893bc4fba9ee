#include "presentation/ledger.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphML;
using testing::ThrowsMessage;

// NOLINTBEGIN(cert-err58-cpp): a test that cannot even copy a text may end.
// Three edges of `a` to `b` share a pairing key in pairs; `x` is no file, and has an edge itself.
const std::string oldFile = graphML(
    "<node id='a'/><node id='b'/><node id='x'><data key='type'>lib</data></node>"
    "<node id='y'><data key='type'>tool</data></node>"
    "<edge source='a' target='b'/><edge source='a' target='b'/>"
    "<edge source='a' target='b'><data key='upstream_component'>f</data></edge>"
    "<edge source='a' target='b'><data key='downstream_component'>f</data></edge>"
    "<edge source='a' target='b'><data key='type'>use</data></edge>"
    "<edge source='x' target='b'/>");
const std::string newFile = graphML(
    "<node id='a'><data key='k'>1</data></node><node id='b'/><edge source='b' target='a'/>");
// NOLINTEND(cert-err58-cpp)

TEST(Ledger, whatAFileContainedIsAccountedFor) {
    const SideLedger left = compare(oldFile, newFile).ledger.sides[0];
    EXPECT_EQ(left.otherNodes, (std::map<std::u16string, std::size_t>{{u"lib", 1}, {u"tool", 1}}));
    EXPECT_EQ(left.compared, 3U);
    EXPECT_EQ(left.folded, 2U);
    EXPECT_EQ(left.leavingOthers, 1U);
}

TEST(Ledger, whatTwoFiltersHideBelongsToTheFirst) {
    const Report report = compare(
        graphML("<node id='a'><data key='k'>1</data><data key='l'>1</data></node><node id='b'/>"),
        graphML("<node id='a'><data key='k'>2</data><data key='l'>1</data></node><node id='b'/>"),
        filtersNamed({"unchanged", "nonstructural"}));
    const Visibility& visibility = report.ledger.visibility;
    // Graph and `b` are equal, so is one row of `a`; what is left of `a` is no structure.
    EXPECT_EQ(visibility.hidden[0].entries.graphs, 1U);
    EXPECT_EQ(visibility.hidden[0].entries.files, 1U);
    EXPECT_EQ(visibility.hidden[0].rows, 1U);
    EXPECT_EQ(visibility.hidden[1].entries.files, 1U);
    EXPECT_EQ(visibility.hidden[1].rows, 1U);
    EXPECT_EQ(visibility.entries, (::comparisons::RowCount{.all = 3, .visible = 0}));
    EXPECT_EQ(visibility.rows, (::comparisons::RowCount{.all = 2, .visible = 0}));
}

TEST(Ledger, whatIsDroppedOrCountedTwiceIsNoticed) {
    const Report report = compare(oldFile, newFile, filtersNamed({"unchanged"}));
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
        EXPECT_THAT(
            [&] {
                checkSides(ledger);
                checkVisibility(ledger);
            },
            ThrowsMessage<LedgerError>(testing::HasSubstr(what)));
    }
}

TEST(Ledger, anItemThatTheComparisonLostIsNoticed) {
    // As if the readers had counted one more than the comparison was given.
    const Report report = compare(oldFile, newFile);
    for (std::size_t LoadedGraph::*count :
         {&LoadedGraph::nodes, &LoadedGraph::files, &LoadedGraph::dependencies}) {
        Inputs inputs = report.inputs;
        ++(inputs[1].*count);
        EXPECT_THROW((void)compareInputs(inputs, {}, {}), LedgerError);
    }
}

}  // namespace
}  // namespace depcompare
