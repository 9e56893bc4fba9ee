// What the three subcomparators accept and refuse.
#include <array>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

#include "library/valueless.h"
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
            (void)subcomparators.at(subcomparator)->compare(edit);
            return "none";
        } catch (const std::bad_variant_access& error) {
            return error.what();
        } catch (const std::bad_optional_access& error) {
            return error.what();
        }
    }
};

TEST_F(SubcomparatorsTest, acceptByTheKindOfTheFirstPresentSide) {
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t kind = 0; kind < 3; ++kind) {
            SCOPED_TRACE(testing::Message() << "subcomparator " << i << " item " << kind);
            const Item& item = items[kind];
            const Item& other = items[(kind + 1) % 3];
            EXPECT_EQ(subcomparators[i]->canCompare({item, item, false}), i == kind);
            EXPECT_EQ(subcomparators[i]->canCompare({item, std::nullopt, false}), i == kind);
            EXPECT_EQ(subcomparators[i]->canCompare({std::nullopt, item, false}), i == kind);
            EXPECT_EQ(subcomparators[i]->canCompare({item, other, false}), i == kind);
        }
        EXPECT_FALSE(subcomparators[i]->canCompare({test::valuelessItem(), items[i], false}));
        EXPECT_THROW((void)subcomparators[i]->canCompare({}), std::bad_optional_access);
    }
    EXPECT_TRUE(GraphSubcomparator().canCompare(
        {Item(std::shared_ptr<const graph::Graph>()), std::nullopt, false}));
}

TEST_F(SubcomparatorsTest, refuseASideOfAnotherKind) {
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t kind = 0; kind < 3; ++kind) {
            const std::string expected = i == kind ? "none" : "std::get: wrong index for variant";
            EXPECT_EQ(refusal(i, {items[i], items[kind], false}), expected) << i << kind;
            EXPECT_EQ(refusal(i, {items[kind], items[i], false}), expected) << i << kind;
        }
        const Item valueless = test::valuelessItem();
        EXPECT_EQ(refusal(i, {valueless, items[i], false}), "std::get: variant is valueless");
        EXPECT_EQ(refusal(i, {items[i], valueless, false}), "std::get: variant is valueless");
    }
}

TEST_F(SubcomparatorsTest, onlyGraphsNeedBothSides) {
    for (std::size_t i = 0; i < 3; ++i) {
        const std::string expected = i == 0 ? "bad optional access" : "none";
        EXPECT_EQ(refusal(i, {items[i], std::nullopt, false}), expected);
        EXPECT_EQ(refusal(i, {std::nullopt, items[i], false}), expected);
    }
}

TEST_F(SubcomparatorsTest, answerAtOnceWithTheirTypeStrings) {
    const char* types[] = {"graph_property_comparison", "node_comparison", "combined_comparison"};
    for (std::size_t i = 0; i < 3; ++i) {
        auto future = subcomparators[i]->compare({items[i], items[i], false});
        ASSERT_EQ(future.wait_for(std::chrono::seconds(0)), std::future_status::ready);
        EXPECT_EQ(get_type(future.get()), types[i]);
    }
    EXPECT_EQ(get_type(DependencyComparison({})), "dependency_comparison");
    EXPECT_EQ(&get_type(DependencyComparison({})), &get_type(DependencyComparison({})));
}

}  // namespace
}  // namespace dependency::comparisons
