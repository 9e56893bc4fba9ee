// Filtered trees: how entries are listed, and which ones the filters hide.
#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_tree_filter.h>
#include <dependency/comparisons/view_model_factories.h>

#include "library/valueless.h"
#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/filter_steps.h"
#include "support/table_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::DiffMetrics;
using ::comparisons::EditType;
using ::comparisons::RowCount;
using ::comparisons::viewmodel::tree::Match;
using test::applySteps;
using test::textOf;

enum class Kind { graph, file, group, valueless };

class GraphTreeFilterTest : public testing::Test {
  protected:
    // "=", "~", "<", ">" and, without sides, "-".
    [[nodiscard]] ItemEdit edit(Kind kind, char mark) const { return edit(kind, kind, mark); }
    [[nodiscard]] ItemEdit edit(Kind left, Kind right, char mark) const {
        ItemEdit edit;
        if (mark != '>' && mark != '-') {
            edit[::comparisons::Side::left] = item(left);
        }
        if (mark != '<' && mark != '-') {
            edit[::comparisons::Side::right] = item(right);
        }
        edit.setChanged(mark == '~');
        return edit;
    }

    const std::shared_ptr<const graph::Graph> graph_ = test::graphOf("A -> B");

  private:
    [[nodiscard]] Item item(Kind kind) const {
        switch (kind) {
            case Kind::graph:
                return graph_;
            case Kind::file:
                return test::nodeOf(graph_, "A");
            case Kind::group:
                return test::groupOf(graph_, "A", "B");
            case Kind::valueless:
                break;
        }
        return test::valuelessItem();
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
        {"same graph, zero metrics", edit(graph, '='), unchanged, Counts{}, ""},
        {"same graph, removed below", edit(graph, '='), unchanged, Counts{1, 0, 0, 0}, "U"},
        {"same graph, added below", edit(graph, '='), unchanged, Counts{0, 1, 0, 0}, "U"},
        {"same graph, changed below", edit(graph, '='), unchanged, Counts{0, 0, 1, 0}, "U"},
        {"same graph, nested count", edit(graph, '='), unchanged, Counts{0, 0, 0, 1}, "U"},
        {"changed graph", edit(graph, '~'), changed, Counts{}, "U"},
        {"removed graph", edit(graph, '<'), leftOnly, unknown, "UN"},
        {"same file", edit(file, '='), unchanged, unknown, ""},
        {"changed file", edit(file, '~'), changed, Counts{1, 1, 1, 1}, "U"},
        {"removed file", edit(file, '<'), leftOnly, Counts{}, "UN"},
        {"added file", edit(file, '>'), rightOnly, unknown, "UN"},
        {"file elsewhere", edit(file, '='), unchanged, Counts{}, "U", true, false},
        {"file in another order", edit(file, '='), unchanged, unknown, "U", false, true},
        {"same group", edit(group, '='), unchanged, unknown, "N"},
        {"same group, zero metrics", edit(group, '='), unchanged, Counts{}, ""},
        {"same group, added below", edit(group, '='), unchanged, Counts{0, 1, 0, 0}, "UN"},
        {"group elsewhere", edit(group, '='), unchanged, Counts{}, "U", true, true},
        {"changed group", edit(group, '~'), changed, unknown, "UN"},
        {"changed group, second pair", edit(group, '~'), changed, Counts{0, 0, 1, 1}, "U"},
        {"changed group, first pair", edit(group, '~'), changed, Counts{1, 0, 0, 0}, "UN"},
        {"removed group", edit(group, '<'), leftOnly, unknown, "UN"},
        {"removed group, zero metrics", edit(group, '<'), leftOnly, Counts{}, "U"},
        {"group, then file", edit(group, file, '~'), changed, Counts{1, 0, 0, 0}, "UN"},
        {"file, then group", edit(file, group, '~'), changed, Counts{1, 0, 0, 0}, "U"},
        {"nothing held", edit(valueless, '~'), changed, Counts{1, 0, 0, 0}, "U"},
        {"nothing held, one side", edit(valueless, '>'), rightOnly, unknown, "UN"},
        {"type against flag", edit(file, '~'), unchanged, unknown, ""},
        {"no edit", std::nullopt, unchanged, Counts{}, "N"},
        {"no edit, changed", std::nullopt, changed, unknown, "UN"},
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
    EXPECT_EQ(tree.entryCount().visible, 1U);
    applySteps(tree, "U");
    EXPECT_EQ(tree.entryCount().visible, 0U);
}

// Counts the questions.
class CountingTree final : public FilteredGraphTree {
  public:
    [[nodiscard]] std::optional<DiffMetrics<2>> metrics(Match match) const override {
        asked += std::to_string(match->getIndex()) + ' ';
        return FilteredGraphTree::metrics(match);
    }
    mutable std::string asked;
};

TEST_F(GraphTreeFilterTest, metricsAreAskedForOnlyWhereTheyDecide) {
    const ItemEdit hidden = edit(Kind::group, '=');
    const ItemEdit edits[] = {hidden, edit(Kind::group, '~'), edit(Kind::group, '='),
                              edit(Kind::file, '=')};
    CountingTree tree;
    for (const ItemEdit& edit : edits) {
        tree.add(&edit, ::comparisons::editType(edit), false, false, FilteredGraphTree::noParent);
    }
    const auto asked = [&](std::string_view filter) {
        tree.resetVisibility();
        tree.entries()[0].visible = 0;
        tree.asked.clear();
        applySteps(tree, filter);
        return tree.asked;
    };
    EXPECT_EQ(asked("U"), "2 3 ");
    EXPECT_EQ(asked("N"), "1 2 ");
}

// The tree of a comparison, whose metrics are those of real view models.
class ShownComparison final : public FilteredGraphTree {
  public:
    explicit ShownComparison(const GraphComparison& comparison) : FilteredGraphTree(comparison) {
        const auto registry = getTwoFilteredVMFactoryRegistry();
        for (const Entry& entry : entries()) {
            const auto& detail = comparison[vertex(entry.match)].detail;
            viewModels_.push_back(registry.create(detail.get()));
        }
    }

    [[nodiscard]] std::optional<DiffMetrics<2>> metrics(Match match) const override {
        return viewModels_.at(match->getIndex())->metrics();
    }

    // The visible entries after these steps, each indented below its parent, with its metrics.
    [[nodiscard]] std::string after(std::string_view steps) {
        resetVisibility();
        for (const auto& viewModel : viewModels_) {
            viewModel->resetVisibility();
            applySteps(*viewModel, steps);
        }
        applySteps(*this, steps);
        std::string text;
        for (const Entry& entry : entries()) {
            if (entry.visible != 0) {
                text += std::string(2 * depth(entry), ' ') + line(entry.match) + '\n';
            }
        }
        return text;
    }

  private:
    [[nodiscard]] std::size_t depth(const Entry& entry) const {
        if (entry.parent == noParent) {
            return 0;
        }
        EXPECT_LT(entry.parent, entry.match->getIndex());
        return 1 + depth(entries().at(entry.parent));
    }
    [[nodiscard]] std::string line(Match match) const {
        const std::string marks = "><~=";
        std::string text(1, marks.at(static_cast<std::size_t>(match->getEditTypes()[0])));
        text += ' ' + test::labelOf(*edit(match)) + " (" + textOf(*metrics(match)) + ')';
        text += match->getIsHierMove().any() ? " moved here" : "";
        text += match->getIsOrderMove().any() ? " moved" : "";
        return text;
    }

    std::vector<std::unique_ptr<::comparisons::FilteredViewModel<Filters, 2>>> viewModels_;
};

TEST_F(GraphTreeFilterTest, realComparisonInAllFilterSettings) {
    const test::Catalogs catalogs;
    const auto left = test::graphOf(
        "graph [license=MIT]\n"
        "A [size=1]\n"
        "B [name=b]\n"
        "C [name=c]\n"
        "D [name=bb checksum=1]\n"
        "A -> B\n"
        "A -> C\n"
        "A -> D\n"
        "B -> C [from=x to=y fromType=1]\n"
        "C -> A [from=p to=q]\n"
        "C -> A [from=r to=q]\n"
        "old -> C\n");
    const auto right = test::graphOf(
        "graph [license=GPL]\n"
        "A [size=2]\n"
        "B [name=y]\n"
        "C [name=c]\n"
        "D [name=z checksum=2]\n"
        "A -> B\n"
        "A -> C\n"
        "A -> D\n"
        "B -> C [from=x to=y fromType=2]\n"
        "C -> A [from=p to=q]\n"
        "E -> A\n");
    const auto comparison = compareGraphs(left, right);
    ShownComparison shown(*comparison);
    EXPECT_EQ(shown.after(""),
              "~ graph (0 0 1 0)\n"
              "  ~ A (0 0 1 0)\n"
              "    = A -> C (0 0 0 0) moved\n"
              "    ~ A -> B (0 0 0 0)\n"
              "    ~ A -> D (0 0 0 0)\n"
              "  = B (0 0 0 0)\n"
              "    ~ B -> C (0 0 1 0)\n"
              "  = C (0 0 0 0)\n"
              "    ~ C -> A (1 0 0 0)\n"
              "  ~ D (0 0 1 0)\n"
              "  < old (0 0 0 0)\n"
              "    < old -> C (1 0 0 0)\n"
              "  > E (0 0 0 0)\n"
              "    > E -> A (0 1 0 0)\n");
    EXPECT_EQ(shown.after("U"),
              "~ graph (0 0 1 0)\n"
              "  ~ A (0 0 1 0)\n"
              "    = A -> C (0 0 0 0) moved\n"
              "    ~ A -> B (0 0 0 0)\n"
              "    ~ A -> D (0 0 0 0)\n"
              "    ~ B -> C (0 0 1 0)\n"
              "    ~ C -> A (1 0 0 0)\n"
              "  ~ D (0 0 1 0)\n"
              "  < old (0 0 0 0)\n"
              "    < old -> C (1 0 0 0)\n"
              "  > E (0 0 0 0)\n"
              "    > E -> A (0 1 0 0)\n");
    const char* structural =
        "    ~ C -> A (1 0 0 0)\n"
        "  < old (0 0 0 0)\n"
        "    < old -> C (1 0 0 0)\n"
        "  > E (0 0 0 0)\n"
        "    > E -> A (0 1 0 0)\n";
    EXPECT_EQ(shown.after("N"), structural);
    EXPECT_EQ(shown.after("UN"), structural);
    EXPECT_EQ(shown.after("NU"), structural);
}

TEST_F(GraphTreeFilterTest, entryWithAParentPerSideIsListedOnceBelowTheRightOne) {
    const test::Catalogs catalogs;
    const auto comparison = compareGraphs(test::graphOf("A -> BC"), test::graphOf("AB -> C"));
    ShownComparison shown(*comparison);
    EXPECT_EQ(shown.after("U"),
              "  < A (0 0 0 0)\n"
              "  < BC (0 0 0 0)\n"
              "  > AB (0 0 0 0)\n"
              "    ~ A -> BC | AB -> C (0 0 1 0) moved here\n"
              "  > C (0 0 0 0)\n");
    EXPECT_EQ(shown.entryCount(), (RowCount{.all = 6, .visible = 5}));
}

}  // namespace
}  // namespace dependency::comparisons
