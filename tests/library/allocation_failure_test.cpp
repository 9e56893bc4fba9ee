// Lets every allocation of a comparison fail once.
#include <new>

#include <gtest/gtest.h>

#include <dependency/comparisons/compare_graphs.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/failing_allocations.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using testing_allocations::blocks;
using testing_allocations::FailingAllocation;

// Returns: how many allocations the comparison makes when none fails.
std::size_t failEveryAllocation(const char* leftText, const char* rightText, bool mayBeSwallowed) {
    const auto left = test::graphOf(leftText);
    const auto right = test::graphOf(rightText);
    const auto nodes = {test::nodeOf(left, "A"), test::nodeOf(right, "A")};
    const auto uses = [&] {
        std::vector<long> counts{left.use_count(), right.use_count()};
        for (const auto& node : nodes) {
            counts.push_back(node.use_count());
        }
        return counts;
    };
    // What is made once a process is made now.
    const std::string whole = test::treeOf(*compareGraphs(left, right));
    const auto usesBefore = uses();
    for (std::size_t number = 0;; ++number) {
        const long blocksBefore = blocks();
        {
            std::shared_ptr<GraphComparison> comparison;
            bool failed = false;
            {
                const FailingAllocation failing(number);
                try {
                    comparison = compareGraphs(left, right);
                } catch (const std::bad_alloc&) {
                }
                failed = failing.happened();
            }
            if (!failed) {
                return number;
            }
            EXPECT_TRUE(!comparison || (mayBeSwallowed && test::treeOf(*comparison) == whole))
                << "allocation " << number;
        }
        EXPECT_EQ(blocks(), blocksBefore) << "allocation " << number;
        EXPECT_EQ(uses(), usesBefore) << "allocation " << number;
        if (testing::Test::HasFailure()) {
            return number;
        }
    }
}

constexpr const char* left =
    "A -> B [from=a-component-name-that-needs-memory]\nA -> C\nB -> external-library-with-long-id\n"
    "external-library-with-long-id [type=external]";
constexpr const char* right =
    "A -> B [from=a-component-name-that-needs-memory]\nA -> B [type=call]\nC -> A";

TEST(AllocationFailure, leavesCompareGraphsAndNothingBehind) {
    EXPECT_GT(failEveryAllocation(left, right, false), 100U);
}

// A name that cannot be looked up, for want of memory too, is the key itself.
TEST(AllocationFailure, ofALookUpOfANameMayGoUnnoticed) {
    const test::Catalogs catalogs;
    EXPECT_GT(failEveryAllocation("A -> B [from=x]\nA [checksum=1]\ngraph [timestamp=x]",
                                  "A -> B [from=y]\nA [checksum=2]\ngraph [license=x]", true),
              50U);
}

}  // namespace
}  // namespace dependency::comparisons
