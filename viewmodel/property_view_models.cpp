#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>

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

template <class Comparison, class Edit>
std::unique_ptr<FilteredViewModel> createFor(const ComparisonValue& comparison,
                                             std::string_view headingKey) {
    const auto& properties = boost::type_erasure::any_cast<const Comparison&>(comparison);
    auto viewModel = std::make_unique<FilteredSubcomparisonVM<Edit>>(properties.edits());
    viewModel->setColumnLabels(label(headingKey), {});
    return viewModel;
}

}  // namespace

GraphPropertyViewModelFactory::~GraphPropertyViewModelFactory() = default;

bool GraphPropertyViewModelFactory::accepts(const ComparisonValue& comparison) const {
    return isA<GraphPropertyComparison>(comparison);
}

std::unique_ptr<FilteredViewModel> GraphPropertyViewModelFactory::create(
    const ComparisonValue& comparison, const CreationContext& /*context*/) const {
    return createFor<GraphPropertyComparison, GraphPropertyEdit>(comparison, "AnalysisDetails");
}

NodePropertyViewModelFactory::~NodePropertyViewModelFactory() = default;

bool NodePropertyViewModelFactory::accepts(const ComparisonValue& comparison) const {
    return isA<NodePropertyComparison>(comparison);
}

std::unique_ptr<FilteredViewModel> NodePropertyViewModelFactory::create(
    const ComparisonValue& comparison, const CreationContext& /*context*/) const {
    return createFor<NodePropertyComparison, NodePropertyEdit>(comparison, "FileProperty");
}

}  // namespace dependency::comparisons
