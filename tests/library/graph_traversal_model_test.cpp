#include <dependency/comparisons/graph_traversal_model.h>

#include <gtest/gtest.h>

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

TEST(GraphTraversalModel, takesFilesFromTheItemAndGroupsFromItsOwnGraphWhichItKeepsAlive) {
    auto own = graphOf("A -> B");
    const auto other = graphOf("C -> D");
    const auto a = nodeOf(own, "A");
    const GraphTraversalModel model(own);
    own.reset();
    EXPECT_EQ(childrenOf(model, a), "A -> B");
    EXPECT_EQ(childrenOf(model, other), "C, D");
    EXPECT_EQ(childrenOf(model, nodeOf(other, "C")), "");
}

}  // namespace
}  // namespace dependency::comparisons
