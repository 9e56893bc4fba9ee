#pragma once
// The order of dependencies in sets.
#include <memory>

#include <dependency/graph/dependency.h>

namespace dependency::graph {

/// Orders dependencies by their own IDs, by code unit; a set in this order holds one dependency per
/// ID.
struct CompareByID {
    [[nodiscard]] bool operator()(const std::shared_ptr<Dependency>& a,
                                  const std::shared_ptr<Dependency>& b) const noexcept {
        return a->getID() < b->getID();
    }
};

}  // namespace dependency::graph
