#include <dependency/comparisons/dependency_subcomparator.h>

#include <fl/i18n/ustring.h>

#include "subcomparators/dependency_pairing.h"

namespace dependency::comparisons {

using ::comparisons::ComparisonValue;

const std::string& get_type(const DependencyComparison& /*comparison*/) {
    static const std::string type = "dependency_comparison";
    return type;
}

bool operator<(const DependencyEdit& a, const DependencyEdit& b) {
    return *anySide(a) < *anySide(b);
}

std::string describeDependency(const graph::Dependency& dependency) {
    const auto upstream = dependency.getUpstreamComponent();
    const auto downstream = dependency.getDownstreamComponent();
    return fl::i18n::ustring_to_utf8(
        u"upstream node: " + dependency.getUpstreamNode()->getID() +         //
        u"\ndownstream node: " + dependency.getDownstreamNode()->getID() +   //
        u"\ndependency type: " + dependency.getType()->getName() +           //
        u"\nupstream component type: " + upstream->getType()->getID() +      //
        u"\nupstream component name: " + upstream->getName() +               //
        u"\ndownstream component type: " + downstream->getType()->getID() +  //
        u"\ndownstream component name: " + downstream->getName());
}

DependencySubcomparator::~DependencySubcomparator() = default;

bool DependencySubcomparator::canCompare(const ItemEdit& edit) const {
    return std::holds_alternative<ParallelDependencies>(anySide(edit));
}

std::future<ComparisonValue> DependencySubcomparator::compare(const ItemEdit& edit) {
    return ::comparisons::readyFuture(DependencyPairing(EditStates::unchecked)(edit));
}

}  // namespace dependency::comparisons
