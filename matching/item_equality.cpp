#include "matching/item_equality.h"

#include <algorithm>

namespace dependency::comparisons {

namespace {

// The same keys in another order are a difference.
template <class Owner>
bool propertiesEqual(const Owner& a, const Owner& b) {
    const auto keys = a.getPropertyKeys();
    return keys == b.getPropertyKeys() && std::ranges::all_of(keys, [&](const auto& key) {
               return a.getProperty(key) == b.getProperty(key);
           });
}

bool groupsEqual(const ParallelDependencies& a, const ParallelDependencies& b) {
    return *a.upstream == *b.upstream && *a.downstream == *b.downstream &&
           std::ranges::equal(a.dependencies, b.dependencies,
                              [](const auto& x, const auto& y) { return *x == *y; });
}

struct Equality {
    using Graph = std::shared_ptr<const graph::Graph>;
    using Node = std::shared_ptr<graph::Node>;
    using Group = ParallelDependencies;

    bool operator()(const Graph& a, const Graph& b) const { return propertiesEqual(*a, *b); }
    bool operator()(const Node& a, const Node& b) const { return propertiesEqual(*a, *b); }
    bool operator()(const Group& a, const Group& b) const { return groupsEqual(a, b); }
    bool operator()(const Graph&, const Node&) const { return true; }
    bool operator()(const Graph&, const Group&) const { return true; }
    bool operator()(const Node&, const Graph&) const { return true; }
    bool operator()(const Node&, const Group&) const { return true; }
    bool operator()(const Group&, const Graph&) const { return true; }
    bool operator()(const Group&, const Node&) const { return true; }
};

}  // namespace

bool itemsEqual(const Item& a, const Item& b) {
    return std::visit(Equality{}, a, b);
}

}  // namespace dependency::comparisons
