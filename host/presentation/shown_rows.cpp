#include "presentation/shown_rows.h"

#include <cstddef>
#include <memory>

#include "presentation/entry_table.h"

namespace depcompare {

namespace {

using ::comparisons::RowCount;
using ::comparisons::viewmodel::parameter::tessel::OptionalParameter;
using ::comparisons::viewmodel::parameter::tessel::ParameterTable;
using Row = ::comparisons::viewmodel::parameter::tessel::Entry;

bool looksLike(const OptionalParameter& one, const OptionalParameter& other) {
    const auto& left = one->getParameter();
    const auto& right = other->getParameter();
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

bool isSimple(const RowCount& count) {
    return count.visible == 0 || count.visible == count.all;
}

std::vector<bool> simply(const RowCount& count) {
    return std::vector<bool>(count.all, count.visible != 0);
}

}  // namespace

std::vector<bool> shownRows(const PresentedTree& tree, PresentedTree::Match match) {
    if (const RowCount count = tree.rowCount(match); isSimple(count)) {
        return simply(count);
    }
    const auto whole = tree.wholeDetail(match);
    return shownRows(tree, match, tablesOf(*whole));
}

std::vector<bool> shownRows(const PresentedTree& tree, PresentedTree::Match match,
                            const std::vector<ParameterTable>& whole) {
    if (const RowCount count = tree.rowCount(match); isSimple(count)) {
        return simply(count);
    }
    std::vector<bool> shown;
    const auto detail = tree.shownDetail(match);
    const auto tables = tablesOf(*detail);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        const auto& shownEntries = tables[i]->getEntries();
        auto next = shownEntries.begin();
        for (const Row& row : whole[i]->getEntries()) {
            const bool isShown = next != shownEntries.end() && looksLike(row, *next);
            shown.push_back(isShown);
            next += isShown ? 1 : 0;
        }
    }
    return shown;
}

}  // namespace depcompare
