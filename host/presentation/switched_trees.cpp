#include "presentation/switched_trees.h"

#include "presentation/entry_table.h"
#include "presentation/shown_rows.h"

namespace depcompare {

namespace {

using ::comparisons::viewmodel::parameter::tessel::ParameterTable;

Choices bitOf(std::size_t choice) {
    return static_cast<Choices>(1U << choice);
}

}  // namespace

SwitchedTrees::SwitchedTrees(
    const std::shared_ptr<const dependency::comparisons::GraphComparison>& comparison,
    const PresentedTree& known) {
    const std::size_t placeOfKnown = placeOfChoice(known.filters());
    for (const EnabledFilters& filters : allChoicesOfFilters()) {
        if (trees_.size() == placeOfKnown) {
            trees_.push_back(&known);
        } else {
            made_.push_back(std::make_unique<PresentedTree>(
                comparison, filters, PresentedTree::OldIDs(), known.telling()));
            trees_.push_back(made_.back().get());
        }
    }
}

Choices SwitchedTrees::choicesThatShow(std::size_t entry) const {
    Choices choices = 0;
    for (std::size_t choice = 0; choice < trees_.size(); ++choice) {
        if (trees_[choice]->entries()[entry].visible != 0) {
            choices |= bitOf(choice);
        }
    }
    return choices;
}

SwitchedDetail SwitchedTrees::detail(std::size_t entry) const {
    const Match whole = unfiltered().entries()[entry].match;
    SwitchedDetail detail{.viewModel = unfiltered().shownDetail(whole), .tables = {}};
    if (!detail.viewModel) {
        return detail;
    }
    const auto tables = tablesOf(*detail.viewModel);
    for (const ParameterTable& table : tables) {
        detail.tables.push_back(
            {.table = table, .choices = std::vector<Choices>(table->getEntries().size())});
    }
    for (std::size_t choice = 0; choice < trees_.size(); ++choice) {
        const PresentedTree& tree = *trees_[choice];
        const auto shown = shownRows(tree, tree.entries()[entry].match, tables);
        auto next = shown.begin();
        for (SwitchedTable& table : detail.tables) {
            for (Choices& row : table.choices) {
                if (*next++) {
                    row |= bitOf(choice);
                }
            }
        }
    }
    return detail;
}

}  // namespace depcompare
