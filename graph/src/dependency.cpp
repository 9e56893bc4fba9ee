#include <dependency/graph/dependency.h>

#include "storage.h"

namespace dependency::graph {

std::shared_ptr<Node> Dependency::getUpstreamNode() const {
    return {owner_->nodes, upstream_};
}

std::shared_ptr<Node> Dependency::getDownstreamNode() const {
    return {owner_->nodes, downstream_};
}

std::shared_ptr<const Type> Dependency::getType() const {
    return {owner_->nodes->types, type_};
}

std::shared_ptr<const Component> Dependency::getUpstreamComponent() const {
    return {owner_->components, upstreamComponent_};
}

std::shared_ptr<const Component> Dependency::getDownstreamComponent() const {
    return {owner_->components, downstreamComponent_};
}

Dependency::ComponentKey Dependency::componentKey() const noexcept {
    return {upstreamComponent_->name_, downstreamComponent_->name_,
            upstreamComponent_->type_->getID(), downstreamComponent_->type_->getID()};
}

Dependency::Key Dependency::key() const noexcept {
    return std::tuple_cat(Ends(type_->getID(), upstream_->getID(), downstream_->getID()),
                          componentKey());
}

bool Dependency::sameContent(const Dependency& other) const noexcept {
    const auto same = [](const Component& x, const Component& y) {
        return &x == &y || (x.name_ == y.name_ && *x.type_ == *y.type_);
    };
    return *type_ == *other.type_ && upstream_->getID() == other.upstream_->getID() &&
           downstream_->getID() == other.downstream_->getID() &&
           same(*upstreamComponent_, *other.upstreamComponent_) &&
           same(*downstreamComponent_, *other.downstreamComponent_);
}

bool operator==(const Dependency& a, const Dependency& b) noexcept {
    return &a == &b || a.sameContent(b);
}

bool operator<(const Dependency& a, const Dependency& b) noexcept {
    // Parallel dependencies of one graph, which are what is sorted most, share both ends.
    const bool sameEnds = a.upstream_ == b.upstream_ && a.downstream_ == b.downstream_;
    if (sameEnds && a.type_ == b.type_) {
        return a.componentKey() < b.componentKey();
    }
    return a.key() < b.key();
}

}  // namespace dependency::graph
