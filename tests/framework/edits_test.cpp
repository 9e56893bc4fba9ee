#include <gtest/gtest.h>

#include <comparisons/edit_type.h>
#include <comparisons/stateful_edit.h>

namespace comparisons {
namespace {

using Edit = StatefulEdit<std::optional<int>, 2>;

TEST(StatefulEdit, offersTheLeftSideElseTheRightOne) {
    EXPECT_EQ(anySide(Edit(1, 2, true)), 1);
    EXPECT_EQ(anySide(Edit(std::nullopt, 2, false)), 2);
    EXPECT_THROW((void)anySide(Edit()), std::bad_optional_access);
}

TEST(SideDeathTest, thirdSideEndsTheProcess) {
    const Edit edit(1, 2, true);
    EXPECT_DEATH((void)edit[static_cast<Side>(2)], "Cannot apply a three way side to `Product`\\.");
}

}  // namespace
}  // namespace comparisons
