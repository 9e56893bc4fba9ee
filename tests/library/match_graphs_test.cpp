#include <dependency/comparisons/match_graphs.h>

#include <set>

#include <gtest/gtest.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

// The edits after the pair of graphs, in alphabetical order.
std::string matched(std::string_view left, std::string_view right) {
    std::multiset<std::string> texts;
    const auto edits = matchGraphs(test::graphOf(left), test::graphOf(right));
    for (auto edit = edits.begin() + 1; edit != edits.end(); ++edit) {
        texts.insert(test::textOf(*edit));
    }
    std::string joined;
    for (const auto& text : texts) {
        joined += (joined.empty() ? "" : ", ") + text;
    }
    return joined;
}

TEST(MatchGraphs, ofCollidingKeysTheLaterItemStaysANodeBeforeAnyGroup) {
    const char* cases[][3] = {
        {"ab -> c\na -> bc", "", "< a, < a -> bc, < ab, < bc, < c"},
        {"a -> bc\nab -> c", "", "< a, < ab, < ab -> c, < bc, < c"},
        // The order of files counts, not that of dependencies.
        {"ab\na -> bc\nab -> c", "", "< a, < a -> bc, < ab, < bc, < c"},
        {"", "a -> bc\nabc", "> a, > abc, > bc"},
        {"\"\" -> a\na", "", "< \"\", < a"},
        {"ab -> c", "a -> bc", "< ab, < c, > a, > bc, ~ ab -> c | a -> bc"},
        {"abc [p=1]", "a -> bc", "= abc | a -> bc, > a, > bc"},
        {"ab -> c\na -> bc", "ab -> c", "< a, < bc, = ab, = c, ~ a -> bc | ab -> c"},
    };
    for (const auto& [left, right, expected] : cases) {
        EXPECT_EQ(matched(left, right), expected) << left << "\n--\n" << right;
    }
}

}  // namespace
}  // namespace dependency::comparisons
