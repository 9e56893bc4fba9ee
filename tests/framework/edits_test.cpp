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
    constexpr auto third = static_cast<Side>(2);
    const Edit edit;
    const BySide<int> values{};
    const auto dies = [](const auto& use, int line) {
        EXPECT_DEATH(use(), "edits_test\\.cpp:" + std::to_string(line) +
                                ": .*indexOf.*: Cannot apply a three way side to `Product`\\.\n$");
    };
    dies([&] { (void)indexOf(third); }, __LINE__);
    dies([&] { (void)edit[third]; }, __LINE__);
    dies([&] { (void)values[third]; }, __LINE__);
}

}  // namespace
}  // namespace comparisons
