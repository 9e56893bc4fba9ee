#include <dependency/comparisons/dependency_subcomparator.h>

#include <gtest/gtest.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::dependencyOf;

// More than a sort keeps in order by chance.
TEST(DependencySubcomparator, keepsTheGreatestIdOfVeryMany) {
    std::string text;
    for (int i = 0; i < 90; ++i) {
        text += "A -> B [from=x id=" + std::to_string(10 + i * 37 % 90) + "]\n";
    }
    EXPECT_EQ(test::rowsOf(text, text, "A -> B"), "use:use\n  = 99 x -> \n");
}

// The state of the tree entry walks both groups in the order of IDs, the rows pair by names.
TEST(DependencySubcomparator, mayFindNoDifferenceInAGroupThatTheTreeShowsAsChanged) {
    const char* left = "A -> B [id=1 from=x]\nA -> B [id=2 from=y]";
    const char* right = "A -> B [id=2 from=x]\nA -> B [id=1 from=y]";
    EXPECT_EQ(test::compared(left, right), "= graph\n  = A\n    ~ A -> B\n  = B\n");
    EXPECT_EQ(test::rowsOf(left, right, "A -> B"),
              "use:use\n  = 1 x ->  | 2 x -> \n  = 2 y ->  | 1 y -> \n");
}

// Their contents are equal, so that their order is open.
TEST(DependencySubcomparator, doesNotPairDependenciesWhoseTypesDifferInNameOnly) {
    const auto rows = test::rowsOf("A -> B [type=t:one]", "A -> B [type=t:two]", "A -> B");
    EXPECT_NE(rows.find("  < 1  -> \n"), std::string::npos) << rows;
    EXPECT_NE(rows.find("  > 1  -> \n"), std::string::npos) << rows;
}

TEST(DependencySubcomparator, comparesWhatHasNoDependenciesToNothing) {
    DependencySubcomparator subcomparator;
    const Item empty = ParallelDependencies();
    EXPECT_EQ(test::rowsOf(subcomparator.compare({empty, empty, false}).get()), "");
    EXPECT_EQ(test::rowsOf(subcomparator.compare(ItemEdit()).get()), "");
    const DependencyEdit edit(dependencyOf("A -> B"), std::nullopt, false);
    EXPECT_THROW((void)(edit < DependencyEdit()), std::bad_optional_access);
    EXPECT_THROW((void)(DependencyEdit() < edit), std::bad_optional_access);
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
