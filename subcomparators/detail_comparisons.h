#pragma once
// The detail comparisons of all entries of one tree, with what they can share.
#include <future>

#include <comparisons/comparison_value.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/item.h>
#include <dependency/comparisons/node_subcomparator.h>

#include "subcomparators/dependency_pairing.h"
#include "subcomparators/displayed_names.h"
#include "subcomparators/edit_states.h"

namespace dependency::comparisons {

[[nodiscard]] GraphPropertyComparison compareGraphProperties(const ItemEdit& edit,
                                                             DisplayedNames& names);
[[nodiscard]] NodePropertyComparison compareNodeProperties(const ItemEdit& edit,
                                                           DisplayedNames& names,
                                                           EditStates states);

/// Serves the entries of one comparison.
class DetailComparisons {
  public:
    /// Requires: `edit` has a side, and its state says whether its sides differ.
    /// Returns:  what the subcomparator that accepts `edit` makes of it.
    [[nodiscard]] std::future<::comparisons::ComparisonValue> operator()(const ItemEdit& edit);

  private:
    DisplayedNames graphNames_ = DisplayedNames::ofGraphs();
    DependencyPairing pairDependencies_{EditStates::trusted};
    DisplayedNames nodeNames_ = DisplayedNames::ofNodes();
};

}  // namespace dependency::comparisons
