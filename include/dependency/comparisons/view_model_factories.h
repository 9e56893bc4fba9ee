#pragma once
// From a detail comparison of this library to the filter-aware table that shows it.
#include <memory>

#include <comparisons/view_model_factory.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/filters.h>

namespace dependency::comparisons {

using FilteredViewModel = ::comparisons::FilteredViewModel<Filters, 2>;
using FilteredViewModelFactory = ::comparisons::FilteredViewModelFactory<Filters, 2>;

/// Shows a `DependencyComparison`: one row per dependency, with the upstream component as its name
/// and the downstream one as its value; a component without a name shows its node. The headings name
/// the dependency type and the roles of the two ends.
///
/// Creates a `::comparisons::viewmodel::ParameterViewModel`.
class DEPENDENCY_COMPARISONS_EXPORT DependencyViewModelFactory final
    : public FilteredViewModelFactory {
  public:
    [[nodiscard]] bool accepts(const ::comparisons::ComparisonValue& comparison) const override;

    /// Throws: also `std::out_of_range` for a comparison without edits, `std::bad_optional_access`
    ///         if the first edit has no side, and what the catalog throws for a missing heading.
    [[nodiscard]] std::unique_ptr<FilteredViewModel> create(
        const ::comparisons::ComparisonValue& comparison,
        const ::comparisons::CreationContext& context) const override;

    ~DependencyViewModelFactory() override;
};

/// Shows a `GraphPropertyComparison`: a row per property. The non-structural filter also hides the
/// analysis time.
///
/// Creates a `::comparisons::viewmodel::ParameterViewModel`.
class DEPENDENCY_COMPARISONS_EXPORT GraphPropertyViewModelFactory final
    : public FilteredViewModelFactory {
  public:
    [[nodiscard]] bool accepts(const ::comparisons::ComparisonValue& comparison) const override;

    /// Throws: also what the catalog throws for a missing heading.
    [[nodiscard]] std::unique_ptr<FilteredViewModel> create(
        const ::comparisons::ComparisonValue& comparison,
        const ::comparisons::CreationContext& context) const override;

    ~GraphPropertyViewModelFactory() override;
};

/// Shows a `NodePropertyComparison`: a row per property. The non-structural filter also hides the
/// checksum.
///
/// Creates a `::comparisons::viewmodel::ParameterViewModel`.
class DEPENDENCY_COMPARISONS_EXPORT NodePropertyViewModelFactory final
    : public FilteredViewModelFactory {
  public:
    [[nodiscard]] bool accepts(const ::comparisons::ComparisonValue& comparison) const override;

    /// Throws: also what the catalog throws for a missing heading.
    [[nodiscard]] std::unique_ptr<FilteredViewModel> create(
        const ::comparisons::ComparisonValue& comparison,
        const ::comparisons::CreationContext& context) const override;

    ~NodePropertyViewModelFactory() override;
};

/// Returns: new factories on every call: for graph properties, dependencies, node properties, and
///          combined comparisons (with factories of its own for their members), in this order.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT ::comparisons::FilteredVMFactoryRegistry<Filters, 2>
getTwoFilteredVMFactoryRegistry();

}  // namespace dependency::comparisons
