// Lets every allocation of a comparison fail once, by replacing the global allocation functions.
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

#include <dependency/comparisons/compare_graphs.h>

#include "support/catalogs.h"
#include "support/text_graph.h"
#include "support/tree_faults.h"

namespace {

thread_local std::size_t untilFailure = 0;  // the allocation that fails; 0 for none
thread_local long blocks = 0;

void* allocate(std::size_t size) noexcept {
    void* const block = std::malloc(size == 0 ? 1 : size);
    blocks += block != nullptr ? 1 : 0;
    return block;
}

void release(void* block) noexcept {
    blocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    if (untilFailure != 0 && --untilFailure == 0) {
        throw std::bad_alloc();
    }
    if (void* const block = allocate(size)) {
        return block;
    }
    throw std::bad_alloc();
}

// Never fails on request: sorts try a buffer this way and go on without one.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    release(block);
}

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    release(block);
}

namespace dependency::comparisons {
namespace {

struct Outcome {
    bool requestedFailureHappened = false;
    bool threw = false;
    std::vector<std::string> faults;
};

Outcome compareWithFailure(std::size_t number, const std::shared_ptr<const graph::Graph>& left,
                           const std::shared_ptr<const graph::Graph>& right) {
    Outcome outcome;
    std::shared_ptr<GraphComparison> comparison;
    untilFailure = number;
    try {
        comparison = compareGraphs(left, right);
    } catch (const std::bad_alloc&) {
        outcome.threw = true;
    }
    outcome.requestedFailureHappened = untilFailure == 0;
    untilFailure = 0;
    if (comparison) {
        outcome.faults = test::faultsOf(*comparison, left, right);
    }
    return outcome;
}

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
    (void)test::faultsOf(*compareGraphs(left, right), left, right);
    const auto usesBefore = uses();
    for (std::size_t number = 1;; ++number) {
        const long blocksBefore = blocks;
        {
            const Outcome outcome = compareWithFailure(number, left, right);
            if (!outcome.requestedFailureHappened) {
                return number - 1;
            }
            EXPECT_TRUE(outcome.threw || mayBeSwallowed) << "allocation " << number;
            EXPECT_EQ(outcome.faults, std::vector<std::string>()) << "allocation " << number;
        }
        EXPECT_EQ(blocks, blocksBefore) << "allocation " << number;
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
