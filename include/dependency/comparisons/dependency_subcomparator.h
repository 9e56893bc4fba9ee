#pragma once
// The detail comparison of a dependency group: its dependencies, paired by type and components.
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <comparisons/subcomparator.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

using DependencyEdit =
    ::comparisons::StatefulEdit<std::optional<std::shared_ptr<graph::Dependency>>, 2>;

/// The paired dependencies of one dependency type.
class DEPENDENCY_COMPARISONS_EXPORT DependencyComparison {
  public:
    explicit DependencyComparison(std::vector<DependencyEdit> edits) : edits_(std::move(edits)) {}

    /// Order: by `operator<` of the edits.
    [[nodiscard]] const std::vector<DependencyEdit>& edits() const noexcept { return edits_; }

  private:
    std::vector<DependencyEdit> edits_;
};

/// Returns: "dependency_comparison".
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT const std::string& get_type(
    const DependencyComparison& comparison);

/// Order:  by the graph model's order of the left dependencies, or of the right one if the left one
///         is absent.
/// Throws: `std::bad_optional_access` for an edit without sides.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool operator<(const DependencyEdit& a,
                                                           const DependencyEdit& b);

/// Returns: the dependency in seven lines of UTF-8, for diagnostics.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT std::string describeDependency(
    const graph::Dependency& dependency);

/// Pairs the dependencies of two groups. Stateless; one instance serves any number of threads.
class DEPENDENCY_COMPARISONS_EXPORT DependencySubcomparator
    : public ::comparisons::Subcomparator<ItemEdit> {
  public:
    /// Returns: true if the first present side holds a group.
    /// Throws:  `std::bad_optional_access` if no side is present.
    [[nodiscard]] bool canCompare(const ItemEdit& edit) const override;

    /// Dependencies pair if their types have one ID, whatever the types' names, and the names of
    /// upstream and downstream component joined are equal; of several on one side that have one
    /// pairing key, only the one with the greatest ID is kept. An absent side counts as empty.
    ///
    /// Returns: a ready future of a `::comparisons::CombinedComparison` with one
    ///          `DependencyComparison` per type, in type-ID order.
    /// Throws:  `std::bad_variant_access` for a present side that is not a group.
    [[nodiscard]] std::future<::comparisons::ComparisonValue> compare(
        const ItemEdit& edit) override;

    ~DependencySubcomparator() override;
};

}  // namespace dependency::comparisons
