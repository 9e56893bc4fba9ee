#include <dependency/comparisons/dependency_subcomparator.h>

#include <gtest/gtest.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::dependencyOf;

// Compares the groups from A to B; a line is the attributes of one dependency.
std::string rows(std::initializer_list<std::string> left,
                 std::initializer_list<std::string> right) {
    std::string texts[2];
    for (std::size_t side = 0; side < 2; ++side) {
        for (const auto& attributes : side == 0 ? left : right) {
            texts[side] += "A -> B [" + attributes + "]\n";
        }
    }
    return test::rowsOf(texts[0], texts[1], "A -> B");
}

TEST(DependencySubcomparator, pairsByTypeAndComponentNamesWhateverTheIds) {
    EXPECT_EQ(
        rows({"id=1 from=x to=y", "id=2 from=z to=y"}, {"id=8 from=z to=y", "id=9 from=x to=y"}),
        "use:use\n"
        "  = 1 x -> y | 9 x -> y\n"
        "  = 2 z -> y | 8 z -> y\n");
    EXPECT_EQ(rows({"from=x fromType=p"}, {"from=x fromType=q"}), "use:use\n  ~ 1 x -> \n");
    EXPECT_EQ(rows({"from=x toType=p"}, {"from=x toType=q"}), "use:use\n  ~ 1 x -> \n");
    EXPECT_EQ(rows({"from=x"}, {"to=X"}), "use:use\n  > 1  -> X\n  < 1 x -> \n");
}

TEST(DependencySubcomparator, joinsNamesWithoutASeparator) {
    EXPECT_EQ(rows({"from=ab to=c"}, {"from=a to=bc"}), "use:use\n  ~ 1 ab -> c | 1 a -> bc\n");
    EXPECT_EQ(rows({"from=x"}, {"to=x"}), "use:use\n  ~ 1 x ->  | 1  -> x\n");
    EXPECT_EQ(rows({"type=t:ab from=c"}, {"type=t:a from=bc"}),
              "t:a, t:ab\n"
              "  ~ 1 c ->  | 1 bc -> \n");
}

TEST(DependencySubcomparator, neverPairsAcrossTypesAndListsTypesById) {
    EXPECT_EQ(rows({"type=b from=x", "type=ab from=x", "type=B from=x"},
                   {"type=a from=x", "type=b from=x"}),
              "B:B\n"
              "  < 3 x -> \n"
              "a:a\n"
              "  > 1 x -> \n"
              "ab:ab\n"
              "  < 2 x -> \n"
              "b:b\n"
              "  = 1 x ->  | 2 x -> \n");
}

TEST(DependencySubcomparator, takesTypesWithOneIdAsOneTypeButPairsByTheirNames) {
    EXPECT_EQ(rows({"type=t:one from=x"}, {"type=t:two from=y"}),
              "t:one, t:two\n"
              "  < 1 x -> \n"
              "  > 1 y -> \n");
    // Both rows have equal contents, so that their order is open.
    const auto text = rows({"type=t:one from=x"}, {"type=t:two from=x"});
    EXPECT_TRUE(text == "t:one, t:two\n  < 1 x -> \n  > 1 x -> \n" ||
                text == "t:one, t:two\n  > 1 x -> \n  < 1 x -> \n")
        << text;
    EXPECT_EQ(
        rows({"type=t:one from=x id=1", "type=t:two from=y id=2"}, {"type=t:two from=y id=3"}),
        "t:one, t:two\n"
        "  < 1 x -> \n"
        "  = 2 y ->  | 3 y -> \n");
}

TEST(DependencySubcomparator, keepsTheGreatestIdOfThoseOfOneSideWithOneKey) {
    EXPECT_EQ(rows({"id=9 from=x", "id=10 from=x", "id=1 from=x"}, {"id=5 from=x fromType=q"}),
              "use:use\n"
              "  ~ 9 x ->  | 5 x -> \n");
    EXPECT_EQ(rows({"id=1 from=a to=b"}, {"id=2 from=ab", "id=1 from=a to=b"}),
              "use:use\n"
              "  ~ 1 a -> b | 2 ab -> \n");
}

// More than a sort keeps in order by chance.
TEST(DependencySubcomparator, keepsTheGreatestIdOfVeryMany) {
    std::string text;
    for (int i = 0; i < 90; ++i) {
        text += "A -> B [from=x id=" + std::to_string(10 + i * 37 % 90) + "]\n";
    }
    EXPECT_EQ(test::rowsOf(text, text, "A -> B"), "use:use\n  = 99 x -> \n");
}

TEST(DependencySubcomparator, ordersEditsByTheirLeftDependencyElseTheRightOne) {
    EXPECT_EQ(rows({"from=ab to=c", "from=aa"}, {"from=a to=bc", "from=aaa"}),
              "use:use\n"
              "  < 2 aa -> \n"
              "  > 2 aaa -> \n"
              "  ~ 1 ab -> c | 1 a -> bc\n");
    const DependencyEdit a(dependencyOf("A -> B [from=a]"), dependencyOf("A -> B [from=z]"), true);
    const DependencyEdit b(std::nullopt, dependencyOf("A -> B [from=b]"), false);
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_FALSE(a < a);
    EXPECT_THROW((void)(a < DependencyEdit()), std::bad_optional_access);
    EXPECT_THROW((void)(DependencyEdit() < a), std::bad_optional_access);
}

TEST(DependencySubcomparator, listsEveryDependencyOfAGroupOfOneSide) {
    EXPECT_EQ(rows({}, {"type=b from=y", "type=a from=y", "type=b from=x"}),
              "a:a\n"
              "  > 2 y -> \n"
              "b:b\n"
              "  > 3 x -> \n"
              "  > 1 y -> \n");
    EXPECT_EQ(rows({"from=x"}, {}), "use:use\n  < 1 x -> \n");
}

TEST(DependencySubcomparator, comparesGroupsWithoutDependenciesToNothing) {
    DependencySubcomparator subcomparator;
    const Item empty = ParallelDependencies();
    EXPECT_EQ(test::rowsOf(subcomparator.compare({empty, empty, false}).get()), "");
    EXPECT_EQ(test::rowsOf(subcomparator.compare(ItemEdit()).get()), "");
}

// The state of the tree entry walks both groups in the order of IDs, the rows pair by names.
TEST(DependencySubcomparator, mayFindNoDifferenceInAGroupThatTheTreeShowsAsChanged) {
    const char* left = "A -> B [id=1 from=x]\nA -> B [id=2 from=y]";
    const char* right = "A -> B [id=2 from=x]\nA -> B [id=1 from=y]";
    EXPECT_EQ(test::compared(left, right), "= graph\n  = A\n    ~ A -> B\n  = B\n");
    EXPECT_EQ(test::rowsOf(left, right, "A -> B"),
              "use:use\n"
              "  = 1 x ->  | 2 x -> \n"
              "  = 2 y ->  | 1 y -> \n");
}

TEST(DescribeDependency, hasSevenLines) {
    EXPECT_EQ(
        describeDependency(*dependencyOf("src/ä.c -> \"a b\" [type=call:Calls from=x "
                                         "fromType=block:Block to=\U0001F600 toType=port:P]")),
        "upstream node: src/ä.c\n"
        "downstream node: a b\n"
        "dependency type: Calls\n"
        "upstream component type: block\n"
        "upstream component name: x\n"
        "downstream component type: port\n"
        "downstream component name: \U0001F600");
}

}  // namespace
}  // namespace dependency::comparisons
