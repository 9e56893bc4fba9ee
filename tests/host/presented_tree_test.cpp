#include "presentation/presented_tree.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphML;

std::string pairOfFiles(const std::string& a, const std::string& edges = "") {
    return graphML("<node id='a'>" + a + "</node><node id='b'/>" + edges);
}

// Whether a difference is visible: without filters, under the non-structural one, under the
// unchanged one, under both.
TEST(PresentedTree, aDifferenceIsVisibleWhereTheFiltersLeaveIt) {
    const std::string plain = pairOfFiles("", "<edge source='a' target='b'/>");
    const std::string graphTime = "<data key='timestamp'>2026-01-01</data>";
    const auto withType = [](const char* type) {
        return graphML("<node id='a'/><node id='x'><data key='type'>" + std::string(type) +
                       "</data></node><edge source='a' target='x'/>");
    };
    struct Case {
        const char* about;
        std::string left;
        std::string right;
        std::array<bool, 4> visible;
    };
    const Case cases[] = {
        {"nothing", plain, plain, {false, false, false, false}},
        {"a property more",
         plain,
         pairOfFiles("<data key='k'>1</data>", "<edge source='a' target='b'/>"),
         {true, false, true, false}},
        {"a property changed",
         pairOfFiles("<data key='k'>1</data>"),
         pairOfFiles("<data key='k'>2</data>"),
         {true, false, true, false}},
        {"a property of the graph",
         pairOfFiles(""),
         graphML(graphTime + "<node id='a'/><node id='b'/>"),
         {true, false, true, false}},
        {"a file", pairOfFiles(""), graphML("<node id='a'/>"), {true, true, true, true}},
        {"a dependency", plain, pairOfFiles(""), {true, true, true, true}},
        {"another type of dependency",
         plain,
         pairOfFiles("", "<edge source='a' target='b'><data key='type'>use</data></edge>"),
         {true, true, true, true}},
        {"an end of another type", withType("lib"), withType("tool"), {true, false, true, false}},
    };
    const auto settings = test::allFilterSettings();
    for (const auto& [about, left, right, visible] : cases) {
        for (std::size_t i = 0; i < settings.size(); ++i) {
            EXPECT_EQ(compare(left, right, settings[i]).tree->showsDifference(), visible.at(i))
                << about << ", setting " << i;
        }
    }
}

TEST(PresentedTree, aMovedEntryIsVisibleUnderTheUnchangedFilterAndNoDifference) {
    const auto file = [](const char* nameOfB) {
        return graphML(
            "<node id='a'/><node id='b'><data key='type'>lib</data>"
            "<data key='name'>" +
            std::string(nameOfB) +
            "</data></node><node id='c'><data key='type'>lib</data></node>"
            "<edge source='a' target='b'/><edge source='a' target='c'/>");
    };
    const Report report = compare(file("b"), file("d"), filtersNamed({"unchanged"}));
    const auto& entries = report.tree->entries();
    const auto moved = std::ranges::find_if(
        entries, [](const auto& entry) { return entry.match->getIsOrderMove().any(); });
    ASSERT_NE(moved, entries.end());
    EXPECT_NE(moved->visible, 0);
}

TEST(PresentedTree, metricsFollowTheFiltersAndTablesShowTheSameRows) {
    const std::string left = pairOfFiles("<data key='k'>1</data><data key='l'>1</data>");
    const std::string right = pairOfFiles("<data key='k'>2</data><data key='m'>1</data>");
    const ::comparisons::DiffMetrics<2> all{.leftOnly = 1, .rightOnly = 1, .changed = 1};
    const ::comparisons::DiffMetrics<2> structural{.leftOnly = 1, .rightOnly = 1};
    const std::array expected{all, structural, all, structural};
    const auto settings = test::allFilterSettings();
    for (std::size_t i = 0; i < settings.size(); ++i) {
        const Report report = compare(left, right, settings[i]);
        const auto file = report.tree->entries().at(1).match;
        EXPECT_EQ(report.tree->metrics(file), expected.at(i)) << i;
        EXPECT_EQ(report.tree->shownDetail(file)->metrics(), expected.at(i)) << i;
    }
}

}  // namespace
}  // namespace depcompare
