#include <gtest/gtest.h>

#include <comparisons/edit_type.h>
#include <comparisons/stateful_edit.h>

namespace comparisons {
namespace {

TEST(SideDeathTest, thirdSideEndsTheProcessAndNamesThePlaceOfTheCall) {
    constexpr auto third = static_cast<Side>(2);
    const StatefulEdit<std::optional<int>, 2> edit;
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
