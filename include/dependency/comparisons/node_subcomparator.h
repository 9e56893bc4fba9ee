#pragma once
// The detail comparison of a file entry: its named properties.
#include <future>
#include <string>

#include <comparisons/subcomparator.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>
#include <dependency/comparisons/property_comparison.h>

namespace dependency::comparisons {

using NodeProperty = Property<graph::Node>;
using NodePropertyEdit = PropertyEdit<graph::Node>;
using NodePropertyComparison = PropertyComparison<graph::Node>;

/// Returns: "node_comparison".
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT const std::string& get_type(
    const NodePropertyComparison& comparison);

/// Order:  by name, by code unit; values take no part.
/// Throws: `std::bad_optional_access` for an edit without sides.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool operator<(const NodePropertyEdit& a,
                                                           const NodePropertyEdit& b);

/// Pairs the properties of two files. Stateless; one instance serves any number of threads.
class DEPENDENCY_COMPARISONS_EXPORT NodeSubcomparator
    : public ::comparisons::Subcomparator<ItemEdit> {
  public:
    /// Returns: true if the first present side holds a node.
    /// Throws:  `std::bad_optional_access` if no side is present.
    [[nodiscard]] bool canCompare(const ItemEdit& edit) const override;

    /// Properties pair by displayed name; of several on one side with one name, the last is kept.
    /// An absent side counts as empty.
    ///
    /// Returns: a ready future of a `NodePropertyComparison`.
    /// Throws:  `std::bad_variant_access` for a present side that is not a node.
    [[nodiscard]] std::future<::comparisons::ComparisonValue> compare(
        const ItemEdit& edit) override;

    ~NodeSubcomparator() override;
};

}  // namespace dependency::comparisons
