#include "viewmodel/make_view_model_param.h"

namespace dependency::comparisons {

namespace {

std::u16string nameOf(const graph::Component& component, const graph::Node& node) {
    std::u16string name = component.getName();
    return name.empty() ? node.getName() : name;
}

}  // namespace

MakeViewModelParam::Param MakeViewModelParam::operator()(
    const std::shared_ptr<graph::Dependency>& dependency) const {
    return {nameOf(*dependency->getUpstreamComponent(), *dependency->getUpstreamNode()),
            nameOf(*dependency->getDownstreamComponent(), *dependency->getDownstreamNode())};
}

MakeViewModelParam::Param MakeViewModelParam::operator()(const GraphProperty& property) const {
    return {property.name, property.value};
}

MakeViewModelParam::Param MakeViewModelParam::operator()(const NodeProperty& property) const {
    return {property.name, property.value};
}

}  // namespace dependency::comparisons
