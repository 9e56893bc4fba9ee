#include "viewmodel/filtered_subcomparison_vm.h"

#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>

namespace dependency::comparisons {

namespace {

// The component's name, or else that of the node, which is asked for only then.
template <class Node>
std::u16string nameOf(const graph::Component& component, const Node& node) {
    std::u16string name = component.getName();
    return name.empty() ? node()->getName() : name;
}

}  // namespace

std::u16string label(std::string_view key) {
    return fl::i18n::MessageCatalog::get_message(
        fl::i18n::MessageID("ORBITA:dependency:comparisons", key), fl::i18n::Locale::global());
}

MakeViewModelParam::Param MakeViewModelParam::operator()(
    const std::shared_ptr<graph::Dependency>& dependency) const {
    return {
        nameOf(*dependency->getUpstreamComponent(), [&] { return dependency->getUpstreamNode(); }),
        nameOf(*dependency->getDownstreamComponent(),
               [&] { return dependency->getDownstreamNode(); })};
}

}  // namespace dependency::comparisons
