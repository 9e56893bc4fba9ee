#include <dependency/comparisons/graph_traversal_model.h>

#include <gtest/gtest.h>

#include "library/valueless.h"
#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::graphOf;
using test::nodeOf;

std::string childrenOf(const GraphTraversalModel& model, const Item& item) {
    std::string text;
    for (const Item& child : model(item)) {
        text += (text.empty() ? "" : ", ") + test::labelOf(child);
    }
    return text;
}

TEST(GraphTraversalModel, listsTheFilesOfAGraphByIdInCodeUnits) {
    const auto graph = graphOf(
        "b\n"
        "lib [type=external]\n"
        "a\n"
        "ab -> lib\n"
        "B\n"
        "FILE [type=FILE]\n"
        "\"\"\n"
        "\U0001F600\n"
        "\uFF41");
    EXPECT_EQ(childrenOf(GraphTraversalModel(graph), graph),
              "\"\", B, a, ab, b, \U0001F600, \uFF41");
    const auto bare = graphOf("lib [type=external]");
    EXPECT_EQ(childrenOf(GraphTraversalModel(bare), bare), "");
}

TEST(GraphTraversalModel, listsTheGroupsOfANodeToNodesOfAnyType) {
    const test::Catalogs catalogs;
    const auto graph = graphOf(
        "A -> b [id=x1]\n"
        "A -> lib\n"
        "A -> A\n"
        "A -> b [id=x2]\n"
        "A -> zoo\n"
        "A [name=c]\n"
        "b [name=B]\n"
        "lib [type=external]\n"
        "zoo [type=Z]\n"
        "lib -> A");
    const GraphTraversalModel model(graph);
    EXPECT_EQ(childrenOf(model, nodeOf(graph, "A")), "A -> zoo, A -> lib, A -> b, A -> A");
    EXPECT_EQ(childrenOf(model, nodeOf(graph, "b")), "");
    EXPECT_EQ(childrenOf(model, test::groupOf(graph, "A", "b")), "");
    EXPECT_EQ(model(nodeOf(graph, "A")), model(nodeOf(graph, "A")));
}

// Equal sort keys are told apart by downstream ID, so that both sides and every run agree.
TEST(GraphTraversalModel, listsGroupsWithEqualSortKeysByDownstreamId) {
    std::string text;
    std::string expected;
    for (const char id : std::string("tgmbxqaf")) {
        text += std::string("A -> ") + id + '\n' + id +
                (id % 2 != 0 ? " [name=same]\n" : " [name=SAME]\n");
    }
    const auto graph = graphOf(text);
    EXPECT_EQ(childrenOf(GraphTraversalModel(graph), nodeOf(graph, "A")),
              "A -> a, A -> b, A -> f, A -> g, A -> m, A -> q, A -> t, A -> x");
}

TEST(GraphTraversalModel, takesFilesFromTheItemAndGroupsFromItsOwnGraph) {
    const auto own = graphOf("A -> B");
    const auto other = graphOf("C -> D");
    const GraphTraversalModel model(own);
    EXPECT_EQ(childrenOf(model, other), "C, D");
    EXPECT_EQ(childrenOf(model, nodeOf(other, "C")), "");
}

TEST(GraphTraversalModel, keepsItsGraphAlive) {
    auto graph = graphOf("A -> B");
    const auto a = nodeOf(graph, "A");
    const GraphTraversalModel model(graph);
    const auto copy = model;
    graph.reset();
    EXPECT_EQ(childrenOf(copy, a), "A -> B");
}

TEST(GraphTraversalModel, refusesAnItemThatHoldsNothing) {
    try {
        (void)GraphTraversalModel(graphOf(""))(test::valuelessItem());
        ADD_FAILURE() << "not refused";
    } catch (const std::bad_variant_access& error) {
        EXPECT_STREQ(error.what(), "std::visit: variant is valueless");
    }
}

}  // namespace
}  // namespace dependency::comparisons
