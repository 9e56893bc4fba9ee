// What the library may not rely on, since its graph interface does not promise it.
#include <gtest/gtest.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::test {
namespace {

// Lines of both graphs, and what a group has.
struct Case {
    const char* left;
    const char* right;
    const char* tree;
    const char* rows;
    const char* group = "A -> B";
};

TEST(OtherHost, equalityOfTheModelDecidesWhatIsChangedAndNamesWhatBelongsTogether) {
    const Case cases[] = {
        // Equal in the model's eyes, but not one pair.
        {"A -> B [from=x]", "A -> B [from=y]", "= graph\n  = A\n    = A -> B\n  = B\n",
         "use:use\n  < 1 x -> \n  > 1 y -> \n"},
        {"A -> B [from=x fromType=p]", "A -> B [from=x fromType=q]",
         "= graph\n  = A\n    ~ A -> B\n  = B\n", "use:use\n  ~ 1 x -> \n"},
        {"A -> B\nB [name=b]", "A -> B\nB [name=c]", "= graph\n  = A\n    ~ A -> B\n  = B\n",
         "use:use\n  = 1  -> \n"},
        // One key, and ends that the model takes for the same.
        {"ab -> c\nab [name=u]\nc [name=d]", "a -> bc\na [name=u]\nbc [name=d]",
         "= graph\n  < ab\n  < c\n  > a\n    = ab -> c | a -> bc (moved here)\n  > bc\n",
         "use:use\n  = 1  -> \n", "ab -> c | a -> bc"},
        // Of dependencies with one ID, a group keeps one.
        {"A -> B [id=1 from=x]\nA -> B [id=1 from=y]\nA -> C [id=1]", "A -> B [id=1 from=x]",
         "= graph\n  = A\n    = A -> B\n    < A -> C\n  = B\n  < C\n", "use:use\n  = 1 x -> \n"},
    };
    for (const auto& [left, right, tree, rows, group] : cases) {
        EXPECT_EQ(compared(left, right), tree) << left << "\n--\n" << right;
        EXPECT_EQ(rowsOf(left, right, group), rows) << left << "\n--\n" << right;
    }
}

}  // namespace
}  // namespace dependency::test
