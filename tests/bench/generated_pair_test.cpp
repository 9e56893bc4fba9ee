#include <gmock/gmock.h>

#include <sstream>

#include <dependency/comparisons/match_graphs.h>

#include "bound.h"
#include "generated_graphs.h"
#include "generated_text.h"
#include "item_counts.h"
#include "shape.h"

namespace depcompare::bench {
namespace {

using testing::AllOf;
using testing::Ge;
using testing::Le;

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

TEST(GeneratedPair, hasFewFilesWithManyDependenciesAndDependents) {
    const GeneratedPair pair = generatePair(10'000);
    for (std::size_t side = 0; side < pair.sides.size(); ++side) {
        const SideShape shape = shapeOf(pair, side);
        EXPECT_THAT(shape.outDegree.median, AllOf(Ge(7U), Le(9U)));
        EXPECT_THAT(shape.outDegree.p99, AllOf(Ge(72U), Le(80U)));
        EXPECT_THAT(shape.outDegree.max, AllOf(Ge(1'000U), Le(2'600U)));
        EXPECT_GT(shape.inDegree.max, shape.files / 5);
        EXPECT_LE(shape.idLength.max, 60U);
        EXPECT_LE(shape.componentName.max, 25U);
        const double perGroup =
            static_cast<double>(shape.dependencies) / static_cast<double>(shape.groups);
        EXPECT_NEAR(perGroup, 1.3, 0.02);
    }
    const PairCounts& groups = pair.expected.groups;
    EXPECT_EQ(pair.expected.files,
              (PairCounts{.removed = 200, .added = 200, .common = 9'800, .changed = 300}));
    EXPECT_NEAR(static_cast<double>(groups.changed) / static_cast<double>(groups.common), 0.05,
                0.005);
}

TEST(GeneratedPair, namesComponentsInTheOrderOfTheirNumbers) {
    for (std::uint32_t file = 0; file < 100; ++file) {
        for (std::uint8_t component = 1; component < 26; ++component) {
            EXPECT_LT(componentName(file, component - 1), componentName(file, component));
        }
    }
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

    ItemCounts bound = pairAtTheBound(left, right).counts;
    EXPECT_EQ(bound.files.changed, 0U);
    bound.files.changed = pair.expected.files.changed;
    EXPECT_EQ(bound, pair.expected);
}

TEST(PairAtTheBound, listsEachItemWithTheNodesOfItsSides) {
    const GeneratedPair pair = generatePair(100);
    const auto left = makeGraph(pair, 0);
    const auto right = makeGraph(pair, 1);
    const BoundResult result = pairAtTheBound(left, right);
    ASSERT_EQ(result.items.size(), pair.expected.entries());
    ItemCounts listed;
    for (const BoundItem& item : result.items) {
        const bool isFile = item.downstream[0] == nullptr && item.downstream[1] == nullptr;
        PairCounts& counts = isFile ? listed.files : listed.groups;
        const bool onLeft = item.upstream[0] != nullptr;
        const bool onRight = item.upstream[1] != nullptr;
        ++(onLeft && onRight ? counts.common : onLeft ? counts.removed : counts.added);
        counts.changed += item.changed ? 1 : 0;
    }
    EXPECT_EQ(listed, result.counts);
}

}  // namespace
}  // namespace depcompare::bench
