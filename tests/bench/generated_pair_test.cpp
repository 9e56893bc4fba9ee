#include <gtest/gtest.h>

#include <sstream>

#include <dependency/comparisons/match_graphs.h>

#include "bound.h"
#include "generated_graphs.h"
#include "generated_text.h"
#include "item_counts.h"

namespace depcompare::bench {
namespace {

std::uint64_t fingerprint(const GeneratedPair& pair) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (std::size_t side = 0; side < pair.sides.size(); ++side) {
        std::ostringstream text;
        writeGraphML(pair, side, text);
        for (const char byte : text.str()) {
            hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
        }
    }
    return hash;
}

// Figures of two versions compare only when both were measured on the same data.
TEST(GeneratedPair, staysTheSameFromVersionToVersion) {
    EXPECT_EQ(fingerprint(generatePair(300, 1)), 4063822363640127098U);
    EXPECT_NE(fingerprint(generatePair(300, 1)), fingerprint(generatePair(300, 2)));
}

TEST(PairAtTheBound, findsWhatTheGeneratorMadeAndMatchGraphsFinds) {
    const GeneratedPair pair = generatePair(1'000);
    const auto left = makeGraph(pair, 0);
    const auto right = makeGraph(pair, 1);

    ItemCounts matched;
    for (const auto& edit : dependency::comparisons::matchGraphs(left, right)) {
        addTo(matched, edit);
    }
    EXPECT_EQ(matched, pair.expected);

    const BoundResult result = pairAtTheBound(left, right);
    EXPECT_EQ(result.items.size(), pair.expected.entries());
    ItemCounts bound = result.counts;
    EXPECT_EQ(bound.files.changed, 0U);
    bound.files.changed = pair.expected.files.changed;
    EXPECT_EQ(bound, pair.expected);
}

}  // namespace
}  // namespace depcompare::bench
