#include <dependency/graph/node.h>

#include "properties.h"
#include "storage.h"

namespace dependency::graph {

std::shared_ptr<const Type> Node::getType() const {
    return {owner_->types, type_};
}

std::vector<std::u16string> Node::getPropertyKeys() const {
    return keysOf(properties_);
}

std::u16string Node::getProperty(const std::u16string& key) const {
    static const KeyOrder ascending;
    const auto found = owner_->keyOrders.find(index_);
    return valueOf(properties_, found == owner_->keyOrders.end() ? ascending : found->second, key);
}

bool operator==(const Node& a, const Node& b) noexcept {
    return &a == &b || (a.id_ == b.id_ && a.name_ == b.name_ && *a.type_ == *b.type_);
}

}  // namespace dependency::graph
