// What the three subcomparators accept and refuse.
#include <array>
#include <memory>

#include <gtest/gtest.h>

#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

class SubcomparatorsTest : public testing::Test {
  protected:
    std::shared_ptr<const graph::Graph> graph = test::graphOf("A -> B");
    // By the alternative that each accepts: graph, node, group.
    std::array<Item, 3> items{graph, test::nodeOf(graph, "A"), test::groupOf(graph, "A", "B")};
    std::array<std::unique_ptr<::comparisons::Subcomparator<ItemEdit>>, 3> subcomparators{
        std::make_unique<GraphSubcomparator>(), std::make_unique<NodeSubcomparator>(),
        std::make_unique<DependencySubcomparator>()};

    // Returns: the text of the refusal, or "none".
    std::string refusal(std::size_t subcomparator, const ItemEdit& edit) {
        try {
            const auto future = subcomparators.at(subcomparator)->compare(edit);
            const bool isReady =
                future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
            return isReady ? "none" : "blocks";
        } catch (const std::bad_variant_access& error) {
            return error.what();
        } catch (const std::bad_optional_access& error) {
            return error.what();
        }
    }
};

TEST_F(SubcomparatorsTest, acceptByTheKindOfTheFirstPresentSideAndRefuseASideOfAnotherKind) {
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t kind = 0; kind < 3; ++kind) {
            SCOPED_TRACE(testing::Message() << "subcomparator " << i << " item " << kind);
            const Item& item = items[kind];
            EXPECT_EQ(subcomparators[i]->canCompare({item, items[(kind + 1) % 3], false}),
                      i == kind);
            EXPECT_EQ(subcomparators[i]->canCompare({std::nullopt, item, false}), i == kind);
            const std::string expected = i == kind ? "none" : "std::get: wrong index for variant";
            EXPECT_EQ(refusal(i, {items[i], item, false}), expected);
            EXPECT_EQ(refusal(i, {item, items[i], false}), expected);
        }
        const std::string oneSided = i == 0 ? "bad optional access" : "none";
        EXPECT_EQ(refusal(i, {items[i], std::nullopt, false}), oneSided);
        EXPECT_EQ(refusal(i, {std::nullopt, items[i], false}), oneSided);
        EXPECT_THROW((void)subcomparators[i]->canCompare({}), std::bad_optional_access);
    }
}

}  // namespace
}  // namespace dependency::comparisons
