#pragma once
// From a detail comparison to the view model that shows it.
#include <cstddef>
#include <memory>
#include <vector>

#include <comparisons/combined_comparison.h>
#include <comparisons/combined_view_model.h>
#include <comparisons/comparison_value.h>
#include <comparisons/view_model.h>

namespace comparisons {

/// The context that a viewer passes to every view model that is created for it; empty so far.
struct CreationContext {};

/// Makes view models of comparisons of one kind.
template <class Filters, std::size_t Sides>
class FilteredViewModelFactory {
  public:
    using Product = FilteredViewModel<Filters, Sides>;

    [[nodiscard]] virtual bool accepts(const ComparisonValue& comparison) const = 0;

    /// Requires: `accepts(comparison)`.
    /// Returns:  never null.
    /// Throws:   `boost::type_erasure::bad_any_cast` for a comparison of another kind.
    /// Lifetime: `comparison` must outlive the view model.
    [[nodiscard]] virtual std::unique_ptr<Product> create(const ComparisonValue& comparison,
                                                          const CreationContext& context) const = 0;

    virtual ~FilteredViewModelFactory() = default;

    FilteredViewModelFactory(const FilteredViewModelFactory&) = default;
    FilteredViewModelFactory& operator=(const FilteredViewModelFactory&) = default;

  protected:
    FilteredViewModelFactory() = default;
};

/// The fallback: accepts anything and shows nothing.
template <class Filters, std::size_t Sides>
class EmptyFilteredViewModelFactory final : public FilteredViewModelFactory<Filters, Sides> {
  public:
    using Product = FilteredViewModel<Filters, Sides>;

    [[nodiscard]] bool accepts(const ComparisonValue& /*comparison*/) const override {
        return true;
    }
    [[nodiscard]] std::unique_ptr<Product> create(
        const ComparisonValue& /*comparison*/, const CreationContext& /*context*/) const override {
        return std::make_unique<EmptyFilteredViewModel<Filters, Sides>>();
    }
};

/// Returns: the view model created by the first of `factories` that accepts `comparison`, else by
///          `fallback`.
template <class Filters, std::size_t Sides, class Factories>
[[nodiscard]] std::unique_ptr<FilteredViewModel<Filters, Sides>> createByFirst(
    const Factories& factories, const EmptyFilteredViewModelFactory<Filters, Sides>& fallback,
    const ComparisonValue& comparison, const CreationContext& context) {
    for (const auto& factory : factories) {
        if (factory->accepts(comparison)) {
            return factory->create(comparison, context);
        }
    }
    return fallback.create(comparison, context);
}

/// Shows a combined comparison as the view models of its members, made by factories of its own.
template <class Filters, std::size_t Sides>
class FilteredCombinedViewModelFactory final : public FilteredViewModelFactory<Filters, Sides> {
  public:
    using Product = FilteredViewModel<Filters, Sides>;
    using Factories = std::vector<std::unique_ptr<FilteredViewModelFactory<Filters, Sides>>>;

    explicit FilteredCombinedViewModelFactory(Factories factories)
        : factories_(std::move(factories)) {}

    [[nodiscard]] bool accepts(const ComparisonValue& comparison) const override {
        static const std::string type = get_type(CombinedComparison({}));
        return get_type(comparison) == type;
    }

    [[nodiscard]] std::unique_ptr<Product> create(const ComparisonValue& comparison,
                                                  const CreationContext& context) const override {
        const auto& combined = boost::type_erasure::any_cast<const CombinedComparison&>(comparison);
        std::vector<std::unique_ptr<Product>> members;
        members.reserve(combined.members().size());
        for (const ComparisonValue& member : combined.members()) {
            members.push_back(createByFirst(factories_, fallback_, member, context));
        }
        return std::make_unique<FilteredCombinedViewModel<Filters, Sides>>(std::move(members));
    }

  private:
    Factories factories_;
    EmptyFilteredViewModelFactory<Filters, Sides> fallback_;
};

/// The factories of a viewer: the first that accepts a comparison makes its view model.
template <class Filters, std::size_t Sides>
struct FilteredVMFactoryRegistry {
    std::vector<std::shared_ptr<FilteredViewModelFactory<Filters, Sides>>> factories;
    EmptyFilteredViewModelFactory<Filters, Sides> fallback;

    /// Returns:  never null.
    /// Lifetime: `comparison` must outlive the view model.
    [[nodiscard]] std::unique_ptr<FilteredViewModel<Filters, Sides>> create(
        const ComparisonValue& comparison, const CreationContext& context = {}) const {
        return createByFirst(factories, fallback, comparison, context);
    }
};

}  // namespace comparisons
