#include "subcomparators/detail_comparisons.h"

#include "core/item_kind.h"

namespace dependency::comparisons {

std::future<::comparisons::ComparisonValue> DetailComparisons::operator()(const ItemEdit& edit) {
    switch (kindOf(anySide(edit))) {
        case ItemKind::graph:
            return ::comparisons::readyFuture(compareGraphProperties(edit, graphNames_));
        case ItemKind::group:
            return ::comparisons::readyFuture(pairDependencies_(edit));
        case ItemKind::node:
            break;
    }
    return ::comparisons::readyFuture(compareNodeProperties(edit, nodeNames_, EditStates::trusted));
}

}  // namespace dependency::comparisons
