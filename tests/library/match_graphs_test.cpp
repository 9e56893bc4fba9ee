#include <dependency/comparisons/match_graphs.h>

#include <set>

#include <gtest/gtest.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::Side;
using test::graphOf;

// The edits, one a line: the pair of graphs first, as the result has it, the others sorted.
std::string matched(const std::shared_ptr<const graph::Graph>& left,
                    const std::shared_ptr<const graph::Graph>& right) {
    const auto edits = matchGraphs(left, right);
    EXPECT_EQ(edits.at(0)[Side::left], Item(left));
    EXPECT_EQ(edits.at(0)[Side::right], Item(right));
    std::multiset<std::string> lines;
    std::string text;
    for (const auto& edit : edits) {
        std::string line(1, test::markOf(edit[Side::left].has_value(),
                                         edit[Side::right].has_value(), edit.isChanged()));
        line += ' ' + test::labelOf(edit) + '\n';
        if (&edit == edits.data()) {
            text = line;
        } else {
            lines.insert(line);
        }
    }
    for (const auto& line : lines) {
        text += line;
    }
    return text;
}

std::string matched(std::string_view left, std::string_view right) {
    return matched(graphOf(left), graphOf(right));
}

struct Case {
    const char* left;
    const char* right;
    const char* expected;
};

void expectMatched(std::initializer_list<Case> cases) {
    for (const auto& [left, right, expected] : cases) {
        EXPECT_EQ(matched(left, right), expected) << left << "\n--\n" << right;
    }
}

TEST(MatchGraphs, pairsGraphsFilesAndGroupsByIdAlone) {
    expectMatched({
        {"", "", "= graph\n"},
        {"x [type=t]", "y [type=u]\ny -> z [id=1]\nz [type=u]", "= graph\n"},
        {"A -> B", "A -> B", "= graph\n= A\n= A -> B\n= B\n"},
        {"A", "a", "= graph\n< A\n> a\n"},
        {"A -> B", "B -> A", "= graph\n< A -> B\n= A\n= B\n> B -> A\n"},
        {"A -> A", "A", "= graph\n< A -> A\n= A\n"},
        {"A -> B", "A -> B\nC -> A\nC -> C",
         "= graph\n= A\n= A -> B\n= B\n> C\n> C -> A\n> C -> C\n"},
    });
}

TEST(MatchGraphs, leavesOutWhatIsNotAFileAndTheGroupsThatLeaveIt) {
    expectMatched({
        {"A -> x\nx -> A\nx [type=t]", "A -> x\nx -> A\nx [type=t]", "= graph\n= A\n= A -> x\n"},
        {"A -> B\nB -> A", "A -> B\nB -> A\nB [type=t]", "= graph\n< B\n< B -> A\n= A\n~ A -> B\n"},
        {"B [type=t]", "B", "= graph\n> B\n"},
    });
}

TEST(MatchGraphs, graphsAndFilesDifferByTheirPropertiesAlone) {
    expectMatched({
        {"graph [a=1 b=2]", "graph [a=1 b=2]", "= graph\n"},
        {"graph [a=1 b=2]", "graph [b=2 a=1]", "~ graph\n"},
        {"graph [a=1]", "graph [a=2]", "~ graph\n"},
        {"graph [a=1]", "graph [b=1]", "~ graph\n"},
        {"graph [a=1]", "graph [a=1 b=2]", "~ graph\n"},
        {"graph [a=1]", "", "~ graph\n"},
        {"@ 2024-05-06 07:08:09", "@ 2025-05-06 07:08:09", "= graph\n"},
        {"A", "A", "= graph\n= A\n"},
        {"A [a=1 b=2]", "A [a=1 b=2]", "= graph\n= A\n"},
        {"A [a=1 b=2]", "A [b=2 a=1]", "= graph\n~ A\n"},
        {"A [a=1]", "A [a=2]", "= graph\n~ A\n"},
        {"A [a=\"\"]", "A", "= graph\n~ A\n"},
        {"A [a=1]", "A [A=1]", "= graph\n~ A\n"},
        {"A [a=1 b=2]", "A [a=1]", "= graph\n~ A\n"},
        {"A [name=x]", "A [name=y]", "= graph\n= A\n"},
        {"A -> B", "A", "= graph\n< A -> B\n< B\n= A\n"},
    });
}

TEST(MatchGraphs, groupsDifferByTheContentOfTheirEndsAndDependencies) {
    const char* same = "= graph\n= A\n= A -> B\n= B\n";
    const char* differs = "= graph\n= A\n= B\n~ A -> B\n";
    expectMatched({
        {"A -> B [id=1 from=x]", "A -> B [id=2 from=x]", same},
        {"A -> B [from=x]", "A -> B [from=y]", differs},
        {"A -> B [to=x]", "A -> B [to=y]", differs},
        {"A -> B [fromType=x]", "A -> B [fromType=y]", differs},
        {"A -> B [toType=x]", "A -> B [toType=y]", differs},
        {"A -> B [type=x]", "A -> B [type=y]", differs},
        {"A -> B [type=x:one]", "A -> B [type=x:two]", same},
        {"A -> B", "A -> B\nA -> B", differs},
        {"A -> B\nA [name=x]", "A -> B\nA [name=y]", differs},
        {"A -> B\nB [name=x]", "A -> B\nB [name=y]", differs},
        {"A -> B [id=1 from=x]\nA -> B [id=2 from=y]", "A -> B [id=1 from=x]\nA -> B [id=2 from=z]",
         differs},
        // The dependencies are walked in the order of their own IDs.
        {"A -> B [id=1 from=x]\nA -> B [id=2 from=y]", "A -> B [id=2 from=x]\nA -> B [id=1 from=y]",
         differs},
        {"A -> B [id=1 from=x]\nA -> B [id=2 from=y]", "A -> B [id=7 from=x]\nA -> B [id=8 from=y]",
         same},
    });
    EXPECT_EQ(matched("A -> B\nA [p=1]\nB [p=1]", "A -> B\nA [p=2]\nB [p=2]"),
              "= graph\n= A -> B\n~ A\n~ B\n");
}

TEST(MatchGraphs, keysThatCollideOnOneSideKeepTheLaterItemAndANodeBeforeAnyGroup) {
    expectMatched({
        {"ab -> c\na -> bc", "", "= graph\n< a\n< a -> bc\n< ab\n< bc\n< c\n"},
        {"a -> bc\nab -> c", "", "= graph\n< a\n< ab\n< ab -> c\n< bc\n< c\n"},
        // The order of files counts, not that of dependencies.
        {"ab\na -> bc\nab -> c", "", "= graph\n< a\n< a -> bc\n< ab\n< bc\n< c\n"},
        {"", "ab -> c\na -> bc", "= graph\n> a\n> a -> bc\n> ab\n> bc\n> c\n"},
        {"abc\na -> bc", "", "= graph\n< a\n< abc\n< bc\n"},
        {"a -> bc\nabc", "", "= graph\n< a\n< abc\n< bc\n"},
        {"ab -> c\na -> bc\nabc", "", "= graph\n< a\n< ab\n< abc\n< bc\n< c\n"},
        {"\"\" -> \"\"", "", "= graph\n< \"\"\n"},
        {"\"\" -> a\na", "", "= graph\n< \"\"\n< a\n"},
        {"a -> \"\"", "", "= graph\n< \"\"\n< a\n"},
        {"a -> aa\naa -> a", "", "= graph\n< a\n< aa\n< aa -> a\n"},
        {"bc [type=t]\nab -> c\na -> bc", "", "= graph\n< a\n< a -> bc\n< ab\n< c\n"},
    });
}

TEST(MatchGraphs, keysThatCollideAcrossTheSidesPairWhateverTheItemsAre) {
    expectMatched({
        {"ab -> c", "a -> bc", "= graph\n< ab\n< c\n> a\n> bc\n~ ab -> c | a -> bc\n"},
        {"abc [p=1]", "a -> bc", "= graph\n= abc | a -> bc\n> a\n> bc\n"},
        {"a -> bc", "abc [p=1]", "= graph\n< a\n< bc\n= a -> bc | abc\n"},
        {"a -> bc\nabc", "a -> bc", "= graph\n= a\n= abc | a -> bc\n= bc\n"},
        {"ab -> c\na -> bc", "ab -> c", "= graph\n< a\n< bc\n= ab\n= c\n~ a -> bc | ab -> c\n"},
    });
}

TEST(MatchGraphs, comparesContentsEvenOfOneGraphWithItself) {
    const auto graph = graphOf("A -> B\nA -> x\nx [type=t]\ngraph [p=1]");
    EXPECT_EQ(matched(graph, graph), "= graph\n= A\n= A -> B\n= A -> x\n= B\n");
}

TEST(MatchGraphs, resultKeepsBothGraphsAlive) {
    auto left = graphOf("A -> B");
    auto right = graphOf("A -> C");
    const std::weak_ptr<const graph::Graph> watched[] = {left, right};
    auto edits = matchGraphs(left, right);
    left.reset();
    right.reset();
    EXPECT_EQ(std::get<0>(*edits[0][Side::left]), watched[0].lock());
    EXPECT_EQ(std::get<0>(*edits[0][Side::right]), watched[1].lock());
    edits.clear();
    EXPECT_TRUE(watched[0].expired() && watched[1].expired());
}

}  // namespace
}  // namespace dependency::comparisons
