// What must hold whatever is compared, on random pairs of graphs.
#include <algorithm>
#include <unordered_map>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <dependency/comparisons/graph_traversal_model.h>
#include <dependency/comparisons/match_graphs.h>

#include "properties/graph_pairs.h"
#include "properties/reference.h"
#include "support/catalogs.h"
#include "support/text_graph.h"

namespace dependency::test {
namespace {

using comparisons::compareGraphs;
using comparisons::ItemEdit;
using Graph = std::shared_ptr<const graph::Graph>;
using Pairs = rc::Gen<GraphPair> (*)();

struct Graphs {
    Graph left;
    Graph right;
};

Graphs anyGraphs(Pairs pairs) {
    const GraphPair pair = *pairs().as("graphs");
    return {graphOf(pair.left), graphOf(pair.right)};
}

std::unordered_map<ItemEdit, int> counted(const std::vector<ItemEdit>& edits) {
    std::unordered_map<ItemEdit, int> counts;
    for (const auto& edit : edits) {
        ++counts[edit];
    }
    return counts;
}

class PropertiesTest : public testing::TestWithParam<Pairs> {
  protected:
    const Catalogs catalogs;
};

INSTANTIATE_TEST_SUITE_P(IDs, PropertiesTest, testing::Values(distinctPairs, collidingPairs),
                         [](const auto& pairs) {
                             return pairs.index == 0 ? "distinct" : "colliding";
                         });

TEST_P(PropertiesTest, matchingAgreesWithTheReference) {
    rc::detail::checkGTest([] {
        const auto [left, right] = anyGraphs(GetParam());
        const auto edits = comparisons::matchGraphs(left, right);
        RC_ASSERT(edits.at(0)[::comparisons::Side::left] == comparisons::Item(left));
        RC_ASSERT(edits.at(0)[::comparisons::Side::right] == comparisons::Item(right));
        RC_ASSERT(counted(edits) == counted(Reference(left, right).edits()));
    });
}

// On each side the children of an entry are those that the side's model lists, in its order; merged,
// every entry but the root is shown once.
void requireChildren(const comparisons::GraphComparison& comparison,
                     const ::comparisons::BySide<Graph>& graphs) {
    std::size_t shown = 1;
    for (const auto vertex : comparison.entries()) {
        const auto& edit = comparison[vertex].edit;
        const auto& tree = comparison.tree();
        for (const auto side : ::comparisons::sides) {
            const comparisons::GraphTraversalModel model(graphs[side]);
            const auto expected =
                edit[side] ? model(*edit[side]) : std::vector<comparisons::Item>();
            std::size_t found = 0;
            for (const auto& link : boost::make_iterator_range(boost::out_edges(vertex, tree))) {
                if (std::ranges::count(tree[link].sides, side) != 0) {
                    const auto& child = comparison[boost::target(link, tree)];
                    RC_ASSERT(expected.at(*child.positions[side]) == *child.edit[side]);
                    ++found;
                }
            }
            RC_ASSERT(found == expected.size());
        }
        shown += comparison.children(vertex).size();
    }
    RC_ASSERT(shown == boost::size(comparison.entries()));
}

// The comparison is as the reference expects it, or refused as that expects.
void requireAsExpected(const Graph& left, const Graph& right) {
    const Reference reference(left, right);
    try {
        const auto comparison = compareGraphs(left, right);
        RC_ASSERT(reference.losses().empty());
        RC_ASSERT(!reference.pairsKinds());
        requireChildren(*comparison, {left, right});
        RC_ASSERT(linesOf(*comparison) == reference.lines());
    } catch (const comparisons::UnmatchedItemError& error) {
        const Loss loss{error.side(), error.lost(), error.kept().value()};
        RC_ASSERT(std::ranges::count(reference.losses(), loss) == 1);
    } catch (const std::bad_variant_access&) {
        RC_ASSERT(reference.losses().empty());
        RC_ASSERT(reference.pairsKinds());
    }
}

TEST_P(PropertiesTest, comparisonAgreesWithTheReferenceBothWays) {
    rc::detail::checkGTest([] {
        const auto [left, right] = anyGraphs(GetParam());
        fl::i18n::Locale::setGlobal(
            fl::i18n::Locale(*rc::gen::element<std::string>("en", "de", "tr")));
        requireAsExpected(left, right);
        requireAsExpected(right, left);
        requireAsExpected(left, left);
    });
}

}  // namespace
}  // namespace dependency::test
