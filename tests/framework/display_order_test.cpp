#include <comparisons/display_order.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <sstream>

#include <gtest/gtest.h>

namespace comparisons {
namespace {

// Takes the children's names in the order of either side; a name that ends in '*' is matched with
// a child of another parent. Returns the merged names: "<a" left only, ">a" right only, "a~" an
// order move, "a*" a hierarchy move.
std::string displayed(const std::string& left, const std::string& right) {
    std::map<std::string, ChildPositions> childByName;
    for (const Side side : sides) {
        std::istringstream names(side == Side::left ? left : right);
        std::uint32_t position = 0;
        for (std::string name; names >> name;) {
            childByName[name].positions[side] = position++;
        }
    }
    std::vector<std::string> names;
    std::vector<ChildPositions> children;
    for (auto& [name, child] : childByName) {
        child.matched =
            name.back() == '*' || (child.positions[Side::left] && child.positions[Side::right]);
        names.push_back(name);
        children.push_back(child);
    }
    std::string text;
    for (const auto& [index, orderMove, hierarchyMove] : displayOrder(children)) {
        const ChildPositions& child = children[index];
        EXPECT_EQ(hierarchyMove, names[index].back() == '*') << names[index];
        text += text.empty() ? "" : " ";
        text += child.matched ? "" : child.positions[Side::left] ? "<" : ">";
        text += names[index] + (orderMove ? "~" : "");
    }
    return text;
}

TEST(DisplayOrder, rightOrderIsTheSpineAndLeftOnlyChildrenComeFirst) {
    const char* cases[][3] = {
        {"", "b a", ">b >a"},
        {"x a", "a y", "<x a >y"},
        {"a x z c", "a w y c", "a <x <z >w >y c"},
        {"a b c", "c a b", "c~ a b"},
        {"a b c", "b c a", "b c a~"},
        {"a c d e b", "a b c d e", "a b~ c d e"},
        // A child that is matched elsewhere is only under its right parent.
        {"m*", "", ""},
        {"", "m*", "m*"},
        {"a x b", "a m* b", "a <x m* b"},
        {"m* a n*", "p* a", "p* a"},
    };
    for (const auto& [left, right, expected] : cases) {
        EXPECT_EQ(displayed(left, right), expected) << left << " | " << right;
    }
}

// All orders of up to six matched children, with the fewest moves found by trying every subset.
TEST(DisplayOrder, movesAreTheFewestThatExplainTheOrder) {
    for (std::uint32_t count = 0; count <= 6; ++count) {
        std::vector<std::uint32_t> leftPositions(count);
        std::iota(leftPositions.begin(), leftPositions.end(), 0U);
        do {
            std::vector<ChildPositions> children;
            for (std::uint32_t i = 0; i < count; ++i) {
                children.push_back({.positions = {leftPositions[i], i}, .matched = true});
            }
            std::size_t longest = 0;
            for (std::uint32_t subset = 0; subset < (1U << count); ++subset) {
                std::vector<std::uint32_t> kept;
                for (std::uint32_t i = 0; i < count; ++i) {
                    if ((subset >> i & 1U) != 0) {
                        kept.push_back(leftPositions[i]);
                    }
                }
                if (std::ranges::is_sorted(kept)) {
                    longest = std::max(longest, kept.size());
                }
            }
            std::vector<std::uint32_t> kept;
            std::uint32_t next = 0;
            for (const auto& child : displayOrder(children)) {
                EXPECT_EQ(child.index, next++);
                if (!child.orderMove) {
                    kept.push_back(leftPositions[child.index]);
                }
            }
            ASSERT_TRUE(std::ranges::is_sorted(kept));
            ASSERT_EQ(kept.size(), longest);
            ASSERT_EQ(next, count);
        } while (std::ranges::next_permutation(leftPositions).found);
    }
}

}  // namespace
}  // namespace comparisons
