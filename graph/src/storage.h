#pragma once
// Where the objects of one graph live: one block per kind of object, with one reference count per
// block.
//
// Pointers alias their block, so that no object has a control block of its own. A block keeps alive
// the blocks into which its objects point; none points back, so nothing leaks.
#include <cstdint>
#include <deque>
#include <map>
#include <memory>

#include <dependency/graph/component.h>
#include <dependency/graph/dependency.h>
#include <dependency/graph/node.h>

#include "properties.h"

namespace dependency::graph {

struct TypeStorage {
    std::deque<Type> objects;

    Type& emplace(std::u16string id, std::u16string name) {
        return objects.emplace_back(Type(std::move(id), std::move(name), this));
    }
};

struct ComponentStorage {
    std::shared_ptr<const TypeStorage> types;
    std::deque<Component> objects;

    Component& emplace(std::u16string name, const Type& type) {
        return objects.emplace_back(Component(std::move(name), type, this));
    }
};

struct NodeStorage {
    std::shared_ptr<const TypeStorage> types;
    std::deque<Node> objects;
    // By index, of nodes with more than a few properties that are not in order of their keys.
    std::map<std::uint32_t, KeyOrder> keyOrders;

    Node& emplace(std::u16string id, std::u16string name, const Type& type,
                  std::vector<Property> properties) {
        return objects.emplace_back(Node(std::move(id), std::move(name), type,
                                         std::move(properties),
                                         static_cast<std::uint32_t>(objects.size()), this));
    }
};

struct DependencyStorage {
    std::shared_ptr<NodeStorage> nodes;
    std::shared_ptr<const ComponentStorage> components;
    std::deque<Dependency> objects;

    Dependency& emplace(std::u16string id, Node& upstream, Node& downstream, const Type& type,
                        const Component& upstreamComponent, const Component& downstreamComponent) {
        return objects.emplace_back(Dependency(std::move(id), upstream, downstream, type,
                                               upstreamComponent, downstreamComponent, this));
    }
};

}  // namespace dependency::graph
