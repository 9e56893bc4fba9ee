#include <dependency/comparisons/graph_tree_filter.h>

#include <algorithm>

namespace dependency::comparisons {

namespace {

using ::comparisons::EditType;
using ::comparisons::UnchangedFilter;
using ::comparisons::viewmodel::tree::Match;

bool keeps(const FilteredGraphTree& tree, Match match, const UnchangedFilter& /*filter*/) {
    if (std::ranges::any_of(match->getEditTypes(),
                            [](EditType type) { return type != EditType::unchanged; })) {
        return true;
    }
    const auto metrics = tree.metrics(match);
    return (metrics && !metrics->areZero()) || match->getIsHierMove().any() ||
           match->getIsOrderMove().any();
}

bool keeps(const FilteredGraphTree& tree, Match match, const NonstructuralFilter& /*filter*/) {
    const ItemEdit* edit = tree.edit(match);
    if (edit == nullptr) {
        return true;
    }
    if (std::holds_alternative<ParallelDependencies>(anySide(*edit))) {
        const auto metrics = tree.metrics(match);
        return !metrics || metrics->areStructural();
    }
    return !hasBothSides(*edit);
}

}  // namespace

void GraphTreeFilter::operator()(FilteredGraphTree& tree, const Filters& filter) const {
    std::visit(
        [&](const auto& active) {
            for (auto& entry : tree.entries()) {
                if (entry.visible != 0 && !keeps(tree, entry.match, active)) {
                    entry.visible = 0;
                }
            }
        },
        filter);
}

}  // namespace dependency::comparisons
