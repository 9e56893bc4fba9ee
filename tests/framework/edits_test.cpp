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

TEST(SideDeathTest, thirdSideEndsTheProcessAndNamesThePlaceOfTheCall) {
    const std::string here = "edits_test\\.cpp:" + std::to_string(__LINE__ + 1) + ": ";
    EXPECT_DEATH((void)indexOf(static_cast<Side>(2)),
                 here + ".*indexOf.*: Cannot apply a three way side to `Product`\\.\n$");
}

}  // namespace
}  // namespace comparisons
