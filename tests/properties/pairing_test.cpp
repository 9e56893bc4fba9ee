// The two ways of pairing must agree wherever the fast one is taken, and it must be taken wherever
// nobody needs the other.
#include <algorithm>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "core/pair_index.h"
#include "matching/key_collisions.h"
#include "matching/pairing.h"
#include "properties/graph_pairs.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::graphOf;

std::vector<Pairing> sorted(std::vector<Pairing> pairings) {
    std::ranges::sort(pairings, {}, &Pairing::items);
    return pairings;
}

TEST(Pairing, bothWaysAgreeUnlessKeysMayCoincide) {
    for (const auto pairs : {test::distinctPairs, test::collidingPairs}) {
        rc::detail::checkGTest([pairs] {
            const test::GraphPair pair = *pairs().as("graphs");
            const PairIndex index(graphOf(pair.left), graphOf(pair.right));
            RC_CLASSIFY(keysMayCoincide(index), "keys may coincide");
            if (!keysMayCoincide(index)) {
                RC_ASSERT(sorted(pairByRank(index)) == sorted(pairByKey(index)));
            }
        });
    }
}

TEST(Pairing, keysMayCoincideOnlyWhereTwoItemsHaveOne) {
    struct Case {
        const char* left;
        const char* right;
        bool mayCoincide;
    };
    const Case cases[] = {
        {"A -> B", "A -> B\nC -> A", false},
        // One ID begins with another, and nothing depends on the rest.
        {"a -> x\nab -> c", "a -> x\nab -> c", false},
        {"a -> bc\nab -> c", "", true},
        {"a -> bc", "ab -> c", true},
        {"ab -> c", "a -> bc", true},
        // Behind a neighbour that begins with both.
        {"a -> bbc\naa -> x\nab -> x\nabb -> c", "", true},
        // A file is called as a group is joined.
        {"a -> b\nab", "", true},
        {"a -> bx\nab -> c", "", false},
        {"a -> b", "ab", true},
        // Dependencies of another file do not count.
        {"a -> x\nab -> c\nz -> bc", "", false},
    };
    for (const auto& [left, right, mayCoincide] : cases) {
        const PairIndex index(graphOf(left), graphOf(right));
        EXPECT_EQ(keysMayCoincide(index), mayCoincide) << left << "\nagainst\n" << right;
    }
}

TEST(Pairing, longChainsOfPrefixesEndTheSearch) {
    std::string text;
    std::string id;
    for (int length = 0; length < 400; ++length) {
        id += 'a';
        text += id + " -> b\n";
    }
    const PairIndex index(graphOf(text), graphOf(""));
    EXPECT_TRUE(keysMayCoincide(index));
    EXPECT_EQ(pairItems(index).size(), 400 + 400 + 1);
}

}  // namespace
}  // namespace dependency::comparisons
