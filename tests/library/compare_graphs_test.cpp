#include <dependency/comparisons/compare_graphs.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::Side;
using test::compared;
using test::graphOf;
using testing::HasSubstr;

TEST(CompareGraphs, fileOnlyOnTheRightStandsUnderTheRootWithItsGroups) {
    EXPECT_EQ(compared("A -> B",
                       "A -> B\n"
                       "C -> A"),
              "= graph\n"
              "  = A\n"
              "    = A -> B\n"
              "  = B\n"
              "  > C\n"
              "    > C -> A\n");
}

TEST(CompareGraphs, graphsWithoutFilesHaveOnlyTheirRoot) {
    EXPECT_EQ(compared("", ""), "= graph\n");
    EXPECT_EQ(compared("x -> y\nx [type=t]\ny [type=t]", "graph [p=1]"), "~ graph\n");
    EXPECT_EQ(test::rowsOf("", "graph [p=1]", "graph"), "> p: 1\n");
}

TEST(CompareGraphs, groupsOfOneFileShowWhatBecameOfEach) {
    EXPECT_EQ(compared("A -> A\n"
                       "A -> B\n"
                       "A -> C [from=x]\n"
                       "A -> lib\n"
                       "lib [type=external]",
                       "A -> C [from=y]\n"
                       "A -> D\n"
                       "A -> A\n"
                       "A -> lib\n"
                       "lib [type=external]\n"
                       "B [p=1]"),
              "= graph\n"
              "  = A\n"
              "    = A -> lib\n"
              "    = A -> A\n"
              "    < A -> B\n"
              "    ~ A -> C\n"
              "    > A -> D\n"
              "  ~ B\n"
              "  = C\n"
              "  > D\n");
}

TEST(CompareGraphs, fileThatBecomesAnotherKindOfNodeGoesWithItsGroups) {
    EXPECT_EQ(compared("A -> B\nB -> A", "A -> B\nB -> A\nB [type=external]"),
              "= graph\n"
              "  = A\n"
              "    ~ A -> B\n"
              "  < B\n"
              "    < B -> A\n");
}

TEST(CompareGraphs, groupsThatTheSidesOrderDifferentlyAreMoved) {
    EXPECT_EQ(compared("A -> B\nA -> C\nA -> D", "A -> B\nA -> C\nA -> D\nB [name=x]"),
              "= graph\n"
              "  = A\n"
              "    = A -> C\n"
              "    = A -> D\n"
              "    ~ A -> B (moved)\n"
              "  = B\n"
              "  = C\n"
              "  = D\n");
}

TEST(CompareGraphs, comparesAGraphWithItselfAndWithAnEqualCopy) {
    const char* text =
        "A -> B [id=1 from=x]\nA -> B [id=2]\nB -> B\nA -> lib\nlib [type=external]\n"
        "B [size=1]\ngraph [p=1]";
    const char* expected =
        "= graph\n"
        "  = A\n"
        "    = A -> lib\n"
        "    = A -> B\n"
        "  = B\n"
        "    = B -> B\n";
    const auto graph = graphOf(text);
    EXPECT_EQ(compared(graph, graph), expected);
    EXPECT_EQ(compared(graph, graphOf(text)), expected);
}

TEST(CompareGraphs, groupPairedByACoincidingKeyHasTwoParents) {
    EXPECT_EQ(compared("ab -> c\na\nbc", "a -> bc\nab\nc"),
              "= graph\n"
              "  = a\n"
              "    ~ ab -> c | a -> bc (moved here)\n"
              "  = ab\n"
              "  = bc\n"
              "  = c\n");
    EXPECT_EQ(test::rowsOf("ab -> c [from=x]", "a -> bc [from=x]", "ab -> c | a -> bc"),
              "use:use\n"
              "  ~ 1 x -> \n");
}

TEST(CompareGraphs, resultIsTheCallersAloneAndKeepsBothGraphsAlive) {
    auto left = graphOf("A -> B [type=call:Call]");
    auto right = graphOf("A -> B [type=call:Call]\nB -> A");
    const std::weak_ptr<const graph::Graph> watched[] = {left, right};
    auto comparison = compareGraphs(left, right);
    EXPECT_EQ(comparison.use_count(), 1);
    EXPECT_EQ(get_type(*comparison), "treeComparison");
    left.reset();
    right.reset();
    EXPECT_EQ(test::treeOf(*comparison, watched[0].lock(), watched[1].lock()),
              "= graph\n  = A\n    = A -> B\n  = B\n    > B -> A\n");
    comparison.reset();
    EXPECT_TRUE(watched[0].expired() && watched[1].expired());
}

TEST(CompareGraphs, reportsAnItemThatTheMatchingLeftOut) {
    const auto group = [](const char16_t* upstream, const char16_t* downstream) {
        return ItemID{.node = upstream, .downstream = downstream};
    };
    const struct {
        const char* graph;
        ItemID lost;
        ItemID kept;
    } cases[] = {
        {"ab -> c\na -> bc", group(u"ab", u"c"), group(u"a", u"bc")},
        {"a -> bc\nab -> c", group(u"a", u"bc"), group(u"ab", u"c")},
        {"abc\na -> bc", group(u"a", u"bc"), {.node = u"abc", .downstream = {}}},
        {"\"\" -> \"\"", group(u"", u""), {.node = u"", .downstream = {}}},
    };
    for (const auto& [text, lost, kept] : cases) {
        for (const Side side : ::comparisons::sides) {
            SCOPED_TRACE(text);
            const bool onTheLeft = side == Side::left;
            try {
                (void)compareGraphs(graphOf(onTheLeft ? text : "z"),
                                    graphOf(onTheLeft ? "z" : text));
                ADD_FAILURE() << "not reported";
            } catch (const UnmatchedItemError& error) {
                EXPECT_EQ(error.side(), side);
                EXPECT_EQ(error.lost(), lost);
                EXPECT_EQ(error.kept(), kept);
                EXPECT_THAT(error.what(), HasSubstr('"' + test::utf8(lost.node) + '"'));
                EXPECT_THAT(error.what(), HasSubstr('"' + test::utf8(kept.node) + '"'));
                EXPECT_THAT(error.what(), HasSubstr(onTheLeft ? "left" : "right"));
            }
        }
    }
}

TEST(CompareGraphs, letsTheRefusalOfANodePairedWithAGroupThrough) {
    const char* pairs[][2] = {{"abc", "a -> bc"}, {"a -> bc", "abc"}};
    for (const auto& [left, right] : pairs) {
        try {
            (void)compareGraphs(graphOf(left), graphOf(right));
            ADD_FAILURE() << "not refused";
        } catch (const std::bad_variant_access& error) {
            EXPECT_STREQ(error.what(), "std::get: wrong index for variant");
        }
    }
}

TEST(CompareGraphs, reportsTheLeftOutItemBeforeAnythingIsComparedInDetail) {
    EXPECT_THROW((void)compareGraphs(graphOf("abc\na -> bc"), graphOf("a -> bc")),
                 UnmatchedItemError);
}

TEST(CompareGraphs, letsAMissingMessageThroughAndLeavesNothingBehind) {
    const test::Catalogs catalogs;
    fl::i18n::MessageCatalog::clear();
    const auto left = graphOf("A -> B\ngraph [timestamp=x]");
    const auto right = graphOf("A -> B");
    const auto a = test::nodeOf(left, "A");
    const auto uses = a.use_count();
    EXPECT_THROW((void)compareGraphs(left, right), fl::i18n::MessageNotFound);
    EXPECT_EQ(left.use_count(), 1);
    EXPECT_EQ(right.use_count(), 1);
    EXPECT_EQ(a.use_count(), uses);
}

}  // namespace
}  // namespace dependency::comparisons
