#include <dependency/comparisons/view_model_factories.h>

#include <iterator>

#include <dependency/comparisons/dependency_subcomparator.h>

#include "viewmodel/filtered_subcomparison_vm.h"

namespace dependency::comparisons {

using ::comparisons::ComparisonValue;
using ::comparisons::CreationContext;

namespace {

template <class Comparison>
bool isA(const ComparisonValue& comparison) {
    static const std::string type = get_type(Comparison({}));
    return get_type(comparison) == type;
}

template <class Edit, class Comparison>
auto createFor(const Comparison& comparison, const CreationContext& context) {
    return std::make_unique<FilteredSubcomparisonVM<Edit>>(comparison.edits(), context);
}

template <class Owner>
std::unique_ptr<FilteredViewModel> createForProperties(const ComparisonValue& comparison,
                                                       const CreationContext& context,
                                                       std::string_view headingKey) {
    auto viewModel = createFor<PropertyEdit<Owner>>(
        boost::type_erasure::any_cast<const PropertyComparison<Owner>&>(comparison), context);
    viewModel->setColumnLabels(label(headingKey), {});
    return viewModel;
}

// The role labels of both headings are on their third line.
constexpr std::u16string_view blankLine = u"\n\n";

std::u16string upstreamHeading(const DependencyComparison& comparison) {
    const std::u16string role = label("ImpactedComponent");
    const auto& first = anySide(comparison.edits().at(0));
    const std::u16string type = first->getType()->getName();
    return label("DependencyType").append(u": ").append(type).append(blankLine).append(role);
}

std::u16string downstreamHeading() {
    return std::u16string(blankLine) + label("RequiredComponent");
}

using Factories = std::vector<std::unique_ptr<FilteredViewModelFactory>>;

Factories makeFactoryList() {
    Factories factories;
    factories.push_back(std::make_unique<GraphPropertyViewModelFactory>());
    factories.push_back(std::make_unique<DependencyViewModelFactory>());
    factories.push_back(std::make_unique<NodePropertyViewModelFactory>());
    return factories;
}

}  // namespace

DependencyViewModelFactory::~DependencyViewModelFactory() = default;

bool DependencyViewModelFactory::accepts(const ComparisonValue& comparison) const {
    return isA<DependencyComparison>(comparison);
}

std::unique_ptr<FilteredViewModel> DependencyViewModelFactory::create(
    const ComparisonValue& comparison, const CreationContext& context) const {
    const auto& dependencies =
        boost::type_erasure::any_cast<const DependencyComparison&>(comparison);
    auto viewModel = createFor<DependencyEdit>(dependencies, context);
    // Evaluated first, so that which missing label is reported does not depend on the compiler.
    const std::u16string downstream = downstreamHeading();
    viewModel->setColumnLabels(upstreamHeading(dependencies), downstream);
    return viewModel;
}

GraphPropertyViewModelFactory::~GraphPropertyViewModelFactory() = default;

bool GraphPropertyViewModelFactory::accepts(const ComparisonValue& comparison) const {
    return isA<GraphPropertyComparison>(comparison);
}

std::unique_ptr<FilteredViewModel> GraphPropertyViewModelFactory::create(
    const ComparisonValue& comparison, const CreationContext& context) const {
    return createForProperties<graph::Graph>(comparison, context, "AnalysisDetails");
}

NodePropertyViewModelFactory::~NodePropertyViewModelFactory() = default;

bool NodePropertyViewModelFactory::accepts(const ComparisonValue& comparison) const {
    return isA<NodePropertyComparison>(comparison);
}

std::unique_ptr<FilteredViewModel> NodePropertyViewModelFactory::create(
    const ComparisonValue& comparison, const CreationContext& context) const {
    return createForProperties<graph::Node>(comparison, context, "FileProperty");
}

::comparisons::FilteredVMFactoryRegistry<Filters, 2> getTwoFilteredVMFactoryRegistry() {
    Factories factories = makeFactoryList();
    factories.push_back(
        std::make_unique<::comparisons::FilteredCombinedViewModelFactory<Filters, 2>>(
            makeFactoryList()));
    return {.factories = {std::make_move_iterator(factories.begin()),
                          std::make_move_iterator(factories.end())},
            .fallback = {}};
}

}  // namespace dependency::comparisons
