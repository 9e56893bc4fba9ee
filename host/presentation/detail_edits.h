#pragma once
// The edits that the rows of an entry's detail show.
#include <boost/type_erasure/any_cast.hpp>

#include <comparisons/combined_comparison.h>
#include <comparisons/comparison_value.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

namespace depcompare {

/// Calls `take` with each edit of a detail comparison, a `GraphPropertyEdit`, `NodePropertyEdit` or
/// `DependencyEdit`; with those of all members, one after the other, for a combined one.
///
/// Order:  that of the rows of its view model.
/// Throws: `boost::type_erasure::bad_any_cast` for any other comparison, and what `take` throws.
template <class Take>
void forEachEdit(const ::comparisons::ComparisonValue& detail, const Take& take) {
    using boost::type_erasure::any_cast;
    const auto takeAll = [&](const auto& comparison) {
        for (const auto& edit : comparison.edits()) {
            take(edit);
        }
    };
    if (const auto* graph =
            any_cast<const dependency::comparisons::GraphPropertyComparison*>(&detail)) {
        takeAll(*graph);
    } else if (const auto* file =
                   any_cast<const dependency::comparisons::NodePropertyComparison*>(&detail)) {
        takeAll(*file);
    } else if (const auto* dependencies =
                   any_cast<const dependency::comparisons::DependencyComparison*>(&detail)) {
        takeAll(*dependencies);
    } else {
        for (const auto& member :
             any_cast<const ::comparisons::CombinedComparison&>(detail).members()) {
            forEachEdit(member, take);
        }
    }
}

}  // namespace depcompare
