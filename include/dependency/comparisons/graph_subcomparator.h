#pragma once
// The detail comparison of the root entry: its named properties.
#include <future>
#include <string>

#include <comparisons/subcomparator.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>
#include <dependency/comparisons/property_comparison.h>

namespace dependency::comparisons {

using GraphProperty = Property<graph::Graph>;
using GraphPropertyEdit = PropertyEdit<graph::Graph>;
using GraphPropertyComparison = PropertyComparison<graph::Graph>;

/// Returns: "graph_property_comparison".
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT const std::string& get_type(
    const GraphPropertyComparison& comparison);

/// Order:  by name, by code unit; values take no part.
/// Throws: `std::bad_optional_access` for an edit without sides.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool operator<(const GraphPropertyEdit& a,
                                                           const GraphPropertyEdit& b);

/// Pairs the properties of two graphs. Stateless; one instance serves any number of threads.
class DEPENDENCY_COMPARISONS_EXPORT GraphSubcomparator
    : public ::comparisons::Subcomparator<ItemEdit> {
  public:
    /// Returns: true if the first present side holds a graph.
    /// Throws:  `std::bad_optional_access` if no side is present.
    [[nodiscard]] bool canCompare(const ItemEdit& edit) const override;

    /// Properties pair by displayed name; of several on one side with one name, the last is kept.
    /// A property whose displayed name is "timestamp" becomes the analysis time of its graph.
    ///
    /// Returns: a ready future of a `GraphPropertyComparison`.
    /// Throws:  `std::bad_optional_access` for an absent side, `std::bad_variant_access` for one
    ///          that is not a graph, and what the catalog throws for a missing label of the
    ///          analysis time.
    [[nodiscard]] std::future<::comparisons::ComparisonValue> compare(
        const ItemEdit& edit) override;

    ~GraphSubcomparator() override;
};

}  // namespace dependency::comparisons
