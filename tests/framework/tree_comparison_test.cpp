#include <comparisons/tree_comparison.h>

#include <gtest/gtest.h>

namespace comparisons {
namespace {

using Edit = StatefulEdit<std::optional<int>, 2>;
using Comparison = TreeComparison<Edit>;
using Tree = Comparison::Tree;

Comparison::Vertex addEntry(Tree& tree, const Edit& edit,
                            std::array<std::optional<std::uint32_t>, 2> positions = {}) {
    const auto vertex = boost::add_vertex(tree);
    tree[vertex] = {.positions = positions, .detail = {}, .edit = edit};
    return vertex;
}

void link(Tree& tree, Comparison::Vertex parent, Comparison::Vertex child,
          std::initializer_list<Side> on) {
    for (const Side side : on) {
        tree[boost::add_edge(parent, child, tree).first].sides.push_back(side);
    }
}

std::string valuesOf(const Comparison& comparison,
                     const std::vector<Comparison::Vertex>& vertices) {
    std::string text;
    for (const auto vertex : vertices) {
        text += std::to_string(anySide(comparison[vertex].edit));
    }
    return text;
}

TEST(TreeComparison, listsTheChildrenOfASideInTheOrderOfTheirPositions) {
    const Comparison comparison([](Tree& tree) {
        const auto root = addEntry(tree, {0, 0, false});
        link(tree, root, addEntry(tree, {1, 1, true}, {{2, 0}}), {Side::left, Side::right});
        link(tree, root, addEntry(tree, {2, 2, false}, {{0, 1}}), {Side::left, Side::right});
        link(tree, root, addEntry(tree, {3, std::nullopt, false}, {{1, {}}}), {Side::left});
        link(tree, root, addEntry(tree, {std::nullopt, 4, false}, {{{}, 2}}), {Side::right});
        return root;
    });
    EXPECT_EQ(get_type(comparison), "treeComparison");
    EXPECT_EQ(valuesOf(comparison, comparison.children(comparison.root(), Side::left)), "231");
    EXPECT_EQ(valuesOf(comparison, comparison.children(comparison.root(), Side::right)), "124");
    EXPECT_FALSE(comparison[comparison.root()].detail.valid());
    EXPECT_EQ(boost::size(comparison.entries()), 5);
}

TEST(TreeComparison, showsAnEntryWithTwoParentsUnderTheRightOne) {
    const Comparison comparison([](Tree& tree) {
        const auto root = addEntry(tree, {0, 0, false});
        const auto first = addEntry(tree, {1, 1, false}, {{0, 0}});
        const auto second = addEntry(tree, {2, 2, false}, {{1, 1}});
        const auto moved = addEntry(tree, {3, 3, false}, {{0, 0}});
        link(tree, root, first, {Side::left, Side::right});
        link(tree, root, second, {Side::left, Side::right});
        link(tree, first, moved, {Side::left});
        link(tree, second, moved, {Side::right});
        return root;
    });
    const auto files = comparison.children(comparison.root());
    ASSERT_EQ(files.size(), 2U);
    EXPECT_TRUE(comparison.children(files[0].vertex).empty());
    EXPECT_EQ(valuesOf(comparison, comparison.children(files[0].vertex, Side::left)), "3");
    const auto shown = comparison.children(files[1].vertex);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_TRUE(shown[0].hierarchyMove);
    EXPECT_FALSE(shown[0].orderMove);
}

TEST(TreeLink, refusesAThirdSide) {
    TreeLink link;
    link.sides.push_back(Side::left);
    link.sides.push_back(Side::right);
    EXPECT_THROW(link.sides.push_back(Side::left), std::bad_alloc);
}

}  // namespace
}  // namespace comparisons
