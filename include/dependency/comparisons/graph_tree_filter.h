#pragma once
// How filters hide entries of a graph comparison.
#include <comparisons/viewmodel/filtered_tree_component.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/filters.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

struct GraphTreeFilter;

/// The filtered tree of a graph comparison.
using FilteredGraphTree =
    ::comparisons::viewmodel::tree::FilteredTreeComponent<ItemEdit, Filters, GraphTreeFilter>;

/// Lowers the visibility flags of a tree's entries by one filter; it never raises one.
///
/// The unchanged filter keeps an entry that is added, removed, changed or moved, or whose metrics
/// are not all zero. The non-structural filter keeps a graph or file that is present on one side
/// only, and a group whose metrics count an addition or a removal; it does not touch an entry without
/// an edit or a group without metrics.
struct DEPENDENCY_COMPARISONS_EXPORT GraphTreeFilter {
    /// Throws: `std::bad_variant_access` for a valueless filter, `std::bad_optional_access` for an
    ///         edit without sides under the non-structural filter.
    void operator()(FilteredGraphTree& tree, const Filters& filter) const;
};

}  // namespace dependency::comparisons
