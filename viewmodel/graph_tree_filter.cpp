#include <dependency/comparisons/graph_tree_filter.h>

#include <algorithm>

namespace dependency::comparisons {

namespace {

using ::comparisons::EditType;
using ::comparisons::UnchangedFilter;
using ::comparisons::viewmodel::tree::Match;

using Entry = FilteredGraphTree::Entry;

bool keeps(const FilteredGraphTree& tree, const Entry& entry, const UnchangedFilter& /*filter*/) {
    const Match match = entry.match;
    if (entry.visible == 0 || std::ranges::any_of(match->getEditTypes(), [](EditType type) {
            return type != EditType::unchanged;
        })) {
        return true;
    }
    const auto metrics = tree.metrics(match);
    return (metrics && !metrics->areZero()) || match->getIsHierMove().any() ||
           match->getIsOrderMove().any();
}

// Looks at hidden entries as well: which edits it refuses does not depend on the filters before it.
bool keeps(const FilteredGraphTree& tree, const Entry& entry,
           const NonstructuralFilter& /*filter*/) {
    const ItemEdit* edit = tree.edit(entry.match);
    if (edit == nullptr) {
        return true;
    }
    if (std::holds_alternative<ParallelDependencies>(anySide(*edit))) {
        const auto metrics = tree.metrics(entry.match);
        return !metrics || metrics->areStructural();
    }
    return !hasBothSides(*edit);
}

}  // namespace

void GraphTreeFilter::operator()(FilteredGraphTree& tree, const Filters& filter) const {
    std::visit(
        [&](const auto& active) {
            for (auto& entry : tree.entries()) {
                if (!keeps(tree, entry, active)) {
                    entry.visible = 0;
                }
            }
        },
        filter);
}

}  // namespace dependency::comparisons
