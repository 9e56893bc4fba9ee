#include "presentation/switched_trees.h"

#include <algorithm>
#include <tuple>

#include "presentation/entry_table.h"

namespace depcompare {

namespace {

using ::comparisons::viewmodel::parameter::tessel::OptionalParameter;
using ::comparisons::viewmodel::parameter::tessel::ParameterTable;
using Row = ::comparisons::viewmodel::parameter::tessel::Entry;

bool looksLike(const OptionalParameter& one, const OptionalParameter& other) {
    const auto& [left, right] = std::tie(one->getParameter(), other->getParameter());
    if (!left || !right) {
        return !left && !right;
    }
    return left->getName() == right->getName() && left->getValue() == right->getValue();
}

bool looksLike(const Row& one, const Row& other) {
    return one->getEditTypes()[0] == other->getEditTypes()[0] &&
           looksLike(one->getParameters()[0], other->getParameters()[0]) &&
           looksLike(one->getParameters()[1], other->getParameters()[1]);
}

/// Sets the choice for the rows of `all` that are in `shown` too. Of rows that look alike, any may
/// be the shown one.
void markShown(const ParameterTable& shown, Choices choice, SwitchedTable& all) {
    const auto& rows = all.table->getEntries();
    std::size_t next = 0;
    for (const Row& row : shown->getEntries()) {
        while (next < rows.size() && !looksLike(row, rows[next])) {
            ++next;
        }
        if (next < rows.size()) {
            all.choices[next++] |= choice;
        }
    }
}

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
            made_.push_back(std::make_unique<PresentedTree>(comparison, filters));
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
    SwitchedDetail detail{
        .viewModel = unfiltered().shownDetail(unfiltered().entries()[entry].match), .tables = {}};
    if (!detail.viewModel) {
        return detail;
    }
    for (const ParameterTable& table : tablesOf(*detail.viewModel)) {
        detail.tables.push_back(
            {.table = table, .choices = std::vector<Choices>(table->getEntries().size())});
    }
    for (std::size_t choice = 0; choice < trees_.size(); ++choice) {
        const PresentedTree& tree = *trees_[choice];
        const Match match = tree.entries()[entry].match;
        const auto count = tree.rowCount(match);
        if (count.visible == count.all) {
            for (SwitchedTable& table : detail.tables) {
                std::ranges::for_each(table.choices, [&](Choices& row) { row |= bitOf(choice); });
            }
        } else if (count.visible != 0) {
            const auto shown = tree.shownDetail(match);
            const auto tables = tablesOf(*shown);
            for (std::size_t i = 0; i < tables.size(); ++i) {
                markShown(tables[i], bitOf(choice), detail.tables[i]);
            }
        }
    }
    return detail;
}

}  // namespace depcompare
