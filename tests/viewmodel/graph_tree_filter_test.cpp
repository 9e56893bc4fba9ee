// Filtered trees: how entries are listed, and which ones the filters hide.
#include <algorithm>

#include <gtest/gtest.h>

#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_tree_filter.h>

#include "support/comparison_text.h"
#include "support/table_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::DiffMetrics;
using ::comparisons::EditType;
using ::comparisons::RowCount;
using ::comparisons::viewmodel::tree::Match;
using test::applySteps;

enum class Kind { graph, file, group };

class GraphTreeFilterTest : public testing::Test {
  protected:
    [[nodiscard]] ItemEdit edit(Kind kind, char mark) const { return edit(kind, kind, mark); }
    [[nodiscard]] ItemEdit edit(Kind left, Kind right, char mark) const {
        return test::markedEdit(mark, item(left), item(right));
    }

    const std::shared_ptr<const graph::Graph> graph_ = test::graphOf("A -> B");

  private:
    [[nodiscard]] Item item(Kind kind) const {
        if (kind == Kind::graph) {
            return graph_;
        }
        return kind == Kind::file ? Item(test::nodeOf(graph_, "A"))
                                  : Item(test::groupOf(graph_, "A", "B"));
    }
};

struct Case {
    const char* name;
    std::optional<ItemEdit> edit;
    EditType type;
    std::optional<DiffMetrics<2>> metrics;
    const char* keptBy;  // letters of the filters
    bool hierarchyMove = false;
    bool orderMove = false;
};

TEST_F(GraphTreeFilterTest, keepsEntriesByKindSidesMetricsAndMoves) {
    using enum EditType;
    using enum Kind;
    using Counts = DiffMetrics<2>;
    const auto unknown = std::nullopt;
    const std::vector<Case> cases{
        {"same graph", edit(graph, '='), unchanged, unknown, ""},
        {"same graph, added below", edit(graph, '='), unchanged, Counts{0, 1, 0, 0}, "U"},
        {"same graph, nested count", edit(graph, '='), unchanged, Counts{0, 0, 0, 1}, "U"},
        {"changed file", edit(file, '~'), changed, Counts{1, 1, 1, 1}, "U"},
        {"removed file", edit(file, '<'), leftOnly, Counts{}, "UN"},
        {"file elsewhere", edit(file, '='), unchanged, Counts{}, "U", true, false},
        {"file in another order", edit(file, '='), unchanged, unknown, "U", false, true},
        {"same group", edit(group, '='), unchanged, unknown, "N"},
        {"same group, added below", edit(group, '='), unchanged, Counts{0, 1, 0, 0}, "UN"},
        {"group elsewhere", edit(group, '='), unchanged, Counts{}, "U", true, true},
        {"changed group", edit(group, '~'), changed, unknown, "UN"},
        {"changed group, second pair", edit(group, '~'), changed, Counts{0, 0, 1, 1}, "U"},
        {"removed group", edit(group, '<'), leftOnly, unknown, "UN"},
        {"removed group, zero metrics", edit(group, '<'), leftOnly, Counts{}, "U"},
        {"group, then file", edit(group, file, '~'), changed, Counts{1, 0, 0, 0}, "UN"},
        {"file, then group", edit(file, group, '~'), changed, Counts{1, 0, 0, 0}, "U"},
        {"type against flag", edit(file, '~'), unchanged, unknown, ""},
        {"no edit", std::nullopt, unchanged, Counts{}, "N"},
    };
    for (const std::string_view steps : {"U", "N", "UN", "NU", "NRU"}) {
        FilteredGraphTree tree;
        for (const Case& entry : cases) {
            const Match match =
                tree.add(entry.edit ? &*entry.edit : nullptr, entry.type, entry.hierarchyMove,
                         entry.orderMove, FilteredGraphTree::noParent);
            if (entry.metrics) {
                tree.setMetrics(match, *entry.metrics);
            }
        }
        applySteps(tree, steps);
        const auto reset = steps.rfind('R');
        const auto effective = reset == steps.npos ? steps : steps.substr(reset + 1);
        std::size_t kept = 0;
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const bool expected = std::ranges::all_of(effective, [&](char step) {
                return std::string_view(cases[i].keptBy).find(step) != std::string_view::npos;
            });
            EXPECT_EQ(tree.entries()[i].visible != 0, expected) << cases[i].name << ' ' << steps;
            kept += expected ? 1U : 0U;
        }
        EXPECT_EQ(tree.entryCount(), (RowCount{.all = cases.size(), .visible = kept}));
    }
}

TEST_F(GraphTreeFilterTest, editWithoutSidesIsRefusedByTheNonstructuralFilterOnly) {
    const ItemEdit none = edit(Kind::file, '-');
    FilteredGraphTree tree;
    tree.add(&none, EditType::unchanged, false, false, FilteredGraphTree::noParent);
    EXPECT_THROW(applySteps(tree, "N"), std::bad_optional_access);
    applySteps(tree, "U");
    EXPECT_EQ(tree.entryCount().visible, 0U);
    EXPECT_THROW(applySteps(tree, "N"), std::bad_optional_access) << "hidden or not";
}

TEST(FilteredGraphTree, listsAnEntryWithAParentPerSideOnceBelowTheRightOne) {
    const auto comparison = compareGraphs(test::graphOf("A -> BC"), test::graphOf("AB -> C"));
    const FilteredGraphTree tree(*comparison);
    std::string text;
    for (const auto& entry : tree.entries()) {
        text += entry.parent == FilteredGraphTree::noParent ? "-" : std::to_string(entry.parent);
        text += ' ' + test::textOf(*tree.edit(entry.match));
        text += entry.match->getIsHierMove().any() ? " moved\n" : "\n";
    }
    EXPECT_EQ(text, "- = graph\n0 < A\n0 < BC\n0 > AB\n3 ~ A -> BC | AB -> C moved\n0 > C\n");
}

}  // namespace
}  // namespace dependency::comparisons
