#include <dependency/graph/component.h>

#include "storage.h"

namespace dependency::graph {

std::shared_ptr<const Type> Component::getType() const {
    return {owner_->types, type_};
}

}  // namespace dependency::graph
