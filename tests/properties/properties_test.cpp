// What must hold whatever is compared, on random pairs of graphs.
#include <algorithm>
#include <unordered_map>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <dependency/comparisons/match_graphs.h>

#include "properties/graph_pairs.h"
#include "properties/reference.h"
#include "support/catalogs.h"
#include "support/text_graph.h"
#include "support/tree_faults.h"

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

// Returns: the flattened comparison, empty where it is refused as the reference expects.
std::vector<FlatEntry> comparedAsExpected(const Graph& left, const Graph& right) {
    const Reference reference(left, right);
    try {
        const auto comparison = compareGraphs(left, right);
        RC_ASSERT(reference.losses().empty());
        RC_ASSERT(!reference.pairsKinds());
        RC_ASSERT(faultsOf(*comparison, left, right) == std::vector<std::string>());
        auto entries = flattened(*comparison);
        RC_ASSERT(entries == reference.entries());
        return entries;
    } catch (const comparisons::UnmatchedItemError& error) {
        const Loss loss{error.side(), error.lost(), error.kept().value()};
        RC_ASSERT(std::ranges::count(reference.losses(), loss) == 1);
    } catch (const std::bad_variant_access&) {
        RC_ASSERT(reference.losses().empty());
        RC_ASSERT(reference.pairsKinds());
    }
    return {};
}

TEST_P(PropertiesTest, comparisonAgreesWithTheReferenceAndMirrors) {
    rc::detail::checkGTest([] {
        const auto [left, right] = anyGraphs(GetParam());
        fl::i18n::Locale::setGlobal(
            fl::i18n::Locale(*rc::gen::element<std::string>("en", "de", "tr")));
        const auto entries = comparedAsExpected(left, right);
        RC_ASSERT(comparedAsExpected(right, left) == mirrored(entries));
    });
}

TEST_P(PropertiesTest, equalGraphsShowNothingChanged) {
    rc::detail::checkGTest([] {
        const GraphPair pair = *GetParam()().as("graphs");
        const Graph graph = graphOf(pair.left);
        for (const Graph& other : {graph, graphOf(pair.left)}) {
            for (const FlatEntry& entry : comparedAsExpected(graph, other)) {
                RC_ASSERT(!entry.changed);
                RC_ASSERT(entry.labels[0] == entry.labels[1]);
                RC_ASSERT(entry.parents[0] == entry.parents[1]);
                RC_ASSERT(entry.positions[0] == entry.positions[1]);
                for (const FlatRow& row : entry.rows) {
                    RC_ASSERT(!row.changed);
                    RC_ASSERT(row.sides[0] == row.sides[1]);
                }
            }
        }
    });
}

TEST(Properties, orderInWhichDependenciesAreAddedDoesNotMatter) {
    const Catalogs catalogs;
    rc::detail::checkGTest([] {
        const GraphPair pair = *distinctPairs().as("graphs");
        const auto entries = comparedAsExpected(graphOf(pair.left), graphOf(pair.right));
        const auto reversed = withDependenciesReversed(pair.left);
        RC_ASSERT(comparedAsExpected(graphOf(reversed), graphOf(pair.right)) == entries);
    });
}

}  // namespace
}  // namespace dependency::test
