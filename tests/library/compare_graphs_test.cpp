#include <dependency/comparisons/compare_graphs.h>

#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::compared;
using test::graphOf;

TEST(CompareGraphs, treeShowsWhatBecameOfFilesAndGroups) {
    EXPECT_EQ(compared("A -> A\n"
                       "A -> B\n"
                       "A -> C [fromType=x]\n"
                       "A -> lib\n"
                       "lib [type=external]",
                       "A -> C [fromType=y]\n"
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

TEST(CompareGraphs, groupPairedByACoincidingKeyHasTwoParents) {
    EXPECT_EQ(compared("ab -> c\na\nbc", "a -> bc\nab\nc"),
              "= graph\n"
              "  = a\n"
              "    ~ ab -> c | a -> bc (moved here)\n"
              "  = ab\n"
              "  = bc\n"
              "  = c\n");
}

TEST(CompareGraphs, resultIsTheCallersAloneAndKeepsBothGraphsAlive) {
    auto left = graphOf("A -> B [type=call:Call]");
    auto right = graphOf("A -> B [type=call:Call]\nB -> A");
    const std::weak_ptr<const graph::Graph> watched[] = {left, right};
    auto comparison = compareGraphs(left, right);
    EXPECT_EQ(comparison.use_count(), 1);
    left.reset();
    right.reset();
    EXPECT_EQ(test::treeOf(*comparison), "= graph\n  = A\n    = A -> B\n  = B\n    > B -> A\n");
    comparison.reset();
    EXPECT_TRUE(watched[0].expired() && watched[1].expired());
}

TEST(CompareGraphs, reportsAnItemThatTheMatchingLeftOut) {
    const char* cases[][3] = {
        {"ab -> c\na -> bc", "",
         "the matching left out \"ab\" -> \"c\" of the left graph: \"a\" -> \"bc\" has the same "
         "key"},
        {"", "abc\na -> bc",
         "the matching left out \"a\" -> \"bc\" of the right graph: \"abc\" has the same key"},
        // Before anything is compared in detail, where a node and a group would be refused.
        {"abc\na -> bc", "a -> bc",
         "the matching left out \"a\" -> \"bc\" of the left graph: \"abc\" has the same key"},
    };
    for (const auto& [left, right, message] : cases) {
        const std::array graphs{graphOf(left), graphOf(right)};
        EXPECT_THAT([&] { (void)compareGraphs(graphs[0], graphs[1]); },
                    testing::ThrowsMessage<UnmatchedItemError>(message));
    }
}

TEST(CompareGraphs, letsRefusalsThroughAndLeavesNothingBehind) {
    const test::Catalogs catalogs;
    EXPECT_THROW((void)compareGraphs(graphOf("abc"), graphOf("a -> bc")), std::bad_variant_access);
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
