#include <comparisons/comparison_value.h>

#include <memory>

#include <gtest/gtest.h>

#include <comparisons/combined_comparison.h>
#include <comparisons/subcomparator.h>

namespace comparisons {
namespace {

using boost::type_erasure::any_cast;

struct MoveOnly {
    std::unique_ptr<int> number;
};

const std::string& get_type(const MoveOnly& /*comparison*/) {
    static const std::string type = "move_only";
    return type;
}

TEST(ComparisonValue, tellsItsTypeAndGivesTheComparisonBackAfterMoves) {
    ComparisonValue first(MoveOnly{std::make_unique<int>(7)});
    const ComparisonValue value(std::move(first));
    EXPECT_EQ(get_type(value), "move_only");
    EXPECT_EQ(&get_type(value), &get_type(MoveOnly{}));
    EXPECT_EQ(boost::type_erasure::typeid_of(value), typeid(MoveOnly));
    EXPECT_EQ(*any_cast<const MoveOnly&>(value).number, 7);
    EXPECT_THROW((void)any_cast<const CombinedComparison&>(value),
                 boost::type_erasure::bad_any_cast);
}

TEST(CombinedComparison, keepsItsMembersInOrderInsideAValue) {
    std::vector<ComparisonValue> members;
    members.emplace_back(MoveOnly{std::make_unique<int>(1)});
    members.emplace_back(CombinedComparison({}));
    const ComparisonValue value(CombinedComparison(std::move(members)));
    EXPECT_EQ(get_type(value), "combined_comparison");
    const auto& kept = any_cast<const CombinedComparison&>(value).members();
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(get_type(kept[0]), "move_only");
    EXPECT_EQ(get_type(kept[1]), "combined_comparison");
}

TEST(Subcomparator, readyFutureDoesNotBlock) {
    auto future = readyFuture(MoveOnly{std::make_unique<int>(7)});
    ASSERT_EQ(future.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    EXPECT_EQ(*any_cast<const MoveOnly&>(future.get()).number, 7);
}

}  // namespace
}  // namespace comparisons
