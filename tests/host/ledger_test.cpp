#include "presentation/ledger.h"

#include <functional>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;
using testing::ThrowsMessage;

constexpr const char* oldFile =
    "a; b; x type=lib; y type=tool; a>b; a>b; a>b upstream_component=f;"
    "a>b downstream_component=f; a>b type=use; x>b";
constexpr const char* newFile = "a k=1; b; b>a";

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
