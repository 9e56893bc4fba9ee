#include "subcomparators/detail_comparisons.h"

namespace dependency::comparisons {

std::future<::comparisons::ComparisonValue> DetailComparisons::operator()(const ItemEdit& edit) {
    if (GraphSubcomparator().canCompare(edit)) {
        return ::comparisons::readyFuture(compareGraphProperties(edit, graphNames_));
    }
    if (DependencySubcomparator().canCompare(edit)) {
        return ::comparisons::readyFuture(pairDependencies_(edit));
    }
    if (NodeSubcomparator().canCompare(edit)) {
        return ::comparisons::readyFuture(
            compareNodeProperties(edit, nodeNames_, EditStates::trusted));
    }
    return {};
}

}  // namespace dependency::comparisons
