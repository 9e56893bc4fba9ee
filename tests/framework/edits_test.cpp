#include <unordered_set>

#include <gtest/gtest.h>

#include <comparisons/edit_type.h>
#include <comparisons/stateful_edit.h>

namespace comparisons {
namespace {

using Edit = StatefulEdit<std::optional<int>, 2>;

TEST(StatefulEdit, holdsLeftBeforeRightAndTheState) {
    const Edit edit(1, std::nullopt, true);
    EXPECT_EQ(edit[Side::left], 1);
    EXPECT_EQ(edit[Side::right], std::nullopt);
    EXPECT_TRUE(edit.isChanged());
    EXPECT_FALSE(Edit().isChanged());
}

TEST(StatefulEdit, offersTheLeftSideElseTheRightOne) {
    const Edit both(1, 2, true);
    EXPECT_EQ(anySide(both), 1);
    EXPECT_EQ(anySide(Edit(std::nullopt, 2, false)), 2);
    EXPECT_THROW((void)anySide(Edit()), std::bad_optional_access);
    EXPECT_TRUE(hasBothSides(both));
    EXPECT_FALSE(hasBothSides(Edit(1, std::nullopt, false)));
    EXPECT_FALSE(hasBothSides(Edit(std::nullopt, 1, false)));
}

TEST(StatefulEdit, comparesAndHashesByBothSidesAndTheState) {
    const std::unordered_set<Edit> edits{
        Edit(1, 2, true),
        Edit(1, 2, false),
        Edit(2, 1, false),
        Edit(1, 2, true),
        Edit(1, std::nullopt, false),
        Edit(std::nullopt, 1, false),
        Edit(0, 0, false),
        Edit(),
    };
    EXPECT_EQ(edits.size(), 7U);
    EXPECT_TRUE(edits.contains(Edit(std::nullopt, 1, false)));
    EXPECT_FALSE(edits.contains(Edit(std::nullopt, 2, false)));
}

TEST(EditType, goesByPresenceThenByState) {
    EXPECT_EQ(editType(Edit(std::nullopt, 2, false)), EditType{0});
    EXPECT_EQ(editType(Edit(1, std::nullopt, false)), EditType{1});
    EXPECT_EQ(editType(Edit(1, 2, true)), EditType{2});
    EXPECT_EQ(editType(Edit(1, 2, false)), EditType{3});
}

TEST(SideDeathTest, thirdSideEndsTheProcess) {
    const Edit edit(1, 2, true);
    EXPECT_DEATH((void)edit[static_cast<Side>(2)], "Cannot apply a three way side to `Product`\\.");
}

}  // namespace
}  // namespace comparisons
