#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>

#include "viewmodel/filtered_subcomparison_vm.h"

namespace dependency::comparisons {

using ::comparisons::ComparisonValue;
using ::comparisons::CreationContext;

namespace {

// The role labels of both headings stand on their third line.
constexpr std::u16string_view blankLine = u"\n\n";

std::u16string upstreamHeading(const DependencyComparison& comparison) {
    const std::u16string role = label("ImpactedComponent");
    const auto& first = anySide(comparison.edits().at(0));
    std::u16string heading = label("DependencyType");
    heading += u": ";
    heading += first->getType()->getName();
    heading += blankLine;
    heading += role;
    return heading;
}

std::u16string downstreamHeading() {
    return std::u16string(blankLine) + label("RequiredComponent");
}

}  // namespace

DependencyViewModelFactory::~DependencyViewModelFactory() = default;

bool DependencyViewModelFactory::accepts(const ComparisonValue& comparison) const {
    static const std::string type = get_type(DependencyComparison({}));
    return get_type(comparison) == type;
}

std::unique_ptr<FilteredViewModel> DependencyViewModelFactory::create(
    const ComparisonValue& comparison, const CreationContext& /*context*/) const {
    const auto& dependencies =
        boost::type_erasure::any_cast<const DependencyComparison&>(comparison);
    auto viewModel =
        std::make_unique<FilteredSubcomparisonVM<DependencyEdit>>(dependencies.edits());
    // The downstream one first, so that of several faults every compiler reports the same.
    const std::u16string downstream = downstreamHeading();
    viewModel->setColumnLabels(upstreamHeading(dependencies), downstream);
    return viewModel;
}

}  // namespace dependency::comparisons
