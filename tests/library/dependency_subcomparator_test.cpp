#include <dependency/comparisons/dependency_subcomparator.h>

#include <gtest/gtest.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::BySide;
using ::comparisons::Side;
using test::dependencyOf;

TEST(DependencySubcomparator, pairsByTypeIdAndJoinedComponentNamesAlone) {
    // More than a sort keeps in order by chance, in another order on the right.
    BySide<std::string> many;
    for (int i = 0; i < 90; ++i) {
        many[Side::left] += "A -> B [from=x id=" + std::to_string(10 + i * 37 % 90) + "]\n";
        many[Side::right] += "A -> B [from=x id=" + std::to_string(10 + i * 53 % 90) + "]\n";
    }
    const std::string cases[][3] = {
        {many[Side::left], many[Side::right], "use:use\n  = 99 x -> \n"},
        // The state of the tree entry walks both groups in the order of IDs, the rows pair by names.
        {"A -> B [id=1 from=x]\nA -> B [id=2 from=y]", "A -> B [id=2 from=x]\nA -> B [id=1 from=y]",
         "use:use\n  = 1 x ->  | 2 x -> \n  = 2 y ->  | 1 y -> \n"},
        {"A -> B [from=a to=bc fromType=p]", "A -> B [from=ab to=c fromType=q]",
         "use:use\n  ~ 1 a -> bc | 1 ab -> c\n"},
        // A type is its ID, whatever its name on either side.
        {"A -> B [type=t:one]", "A -> B [type=t:two]", "t:one, t:two\n  = 1  -> \n"},
        {"A -> B [type=t:one]\nA -> B [type=t:two]\nA -> B [type=t:one from=x]",
         "A -> B [id=4 type=t:three]\nA -> B [id=5 type=t:four from=x]",
         "t:four, t:one, t:three, t:two\n  = 2  ->  | 4  -> \n  = 3 x ->  | 5 x -> \n"},
    };
    for (const auto& [left, right, rows] : cases) {
        EXPECT_EQ(test::rowsOf(left, right, "A -> B"), rows) << left << "\n--\n" << right;
    }
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
