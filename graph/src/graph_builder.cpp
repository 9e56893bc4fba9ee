#include <dependency/graph/graph_builder.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>

#include <boost/locale/encoding_utf.hpp>

#include "distinct_ids.h"
#include "properties.h"
#include "storage.h"

namespace dependency::graph {

GraphBuildError::GraphBuildError(std::string_view problem, std::u16string id)
    : std::invalid_argument(std::string(problem) + " (\"" +
                            boost::locale::conv::utf_to_utf<char>(id) + "\")"),
      id_(std::move(id)) {}

GraphBuildError::~GraphBuildError() = default;

struct GraphBuilder::State {
    // Interned objects by what they are made of; the views point into the objects themselves.
    using TypeKey = std::pair<std::u16string_view, std::u16string_view>;
    using ComponentKey = std::pair<std::u16string_view, const Type*>;

    std::shared_ptr<TypeStorage> types = std::make_shared<TypeStorage>();
    std::shared_ptr<ComponentStorage> components = std::make_shared<ComponentStorage>();
    std::shared_ptr<NodeStorage> nodes = std::make_shared<NodeStorage>();
    std::shared_ptr<DependencyStorage> dependencies = std::make_shared<DependencyStorage>();
    std::map<TypeKey, const Type*> typeByContent;
    std::map<ComponentKey, const Component*> componentByContent;
    DistinctIDs nodeIDs;
    DistinctIDs dependencyIDs;
    std::vector<Property> properties;
    std::map<std::u16string, std::size_t, std::less<>> propertyByKey;
    boost::posix_time::ptime timeStamp;

    State() {
        components->types = types;
        nodes->types = types;
        dependencies->nodes = nodes;
        dependencies->components = components;
    }

    void check(const std::shared_ptr<const Type>& type, std::u16string_view id) const {
        if (!type) {
            throw GraphBuildError("null type", std::u16string(id));
        }
        if (type->owner_ != types.get() && type != Type::FILE()) {
            throw GraphBuildError("type of another builder", std::u16string(id));
        }
    }

    void check(const std::shared_ptr<const Component>& component, std::u16string_view id) const {
        if (!component) {
            throw GraphBuildError("null component", std::u16string(id));
        }
        if (component->owner_ != components.get()) {
            throw GraphBuildError("component of another builder", std::u16string(id));
        }
    }

    void check(const std::shared_ptr<Node>& node, std::u16string_view id) const {
        if (!node) {
            throw GraphBuildError("null node", std::u16string(id));
        }
        if (node->owner_ != nodes.get()) {
            throw GraphBuildError("node of another builder", std::u16string(id));
        }
    }
};

namespace {

bool hasKeyTwice(const std::vector<Property>& properties, const KeyOrder& order) {
    const auto sameKey = [&](std::uint32_t a, std::uint32_t b) {
        return properties[a].first == properties[b].first;
    };
    return std::ranges::adjacent_find(order, sameKey) != order.end();
}

}  // namespace

GraphBuilder::GraphBuilder() : state_(std::make_unique<State>()) {}
GraphBuilder::~GraphBuilder() = default;
GraphBuilder::GraphBuilder(GraphBuilder&&) noexcept = default;
GraphBuilder& GraphBuilder::operator=(GraphBuilder&&) noexcept = default;

std::shared_ptr<const Type> GraphBuilder::type(std::u16string_view id, std::u16string_view name) {
    if (id == Type::FILE()->getID() && name == Type::FILE()->getName()) {
        return Type::FILE();
    }
    auto& known = state_->typeByContent;
    auto found = known.find({id, name});
    if (found == known.end()) {
        const Type& added = state_->types->emplace(std::u16string(id), std::u16string(name));
        found = known.emplace(State::TypeKey(added.getID(), added.getName()), &added).first;
    }
    return {state_->types, found->second};
}

std::shared_ptr<const Component> GraphBuilder::component(std::u16string_view name,
                                                         const std::shared_ptr<const Type>& type) {
    state_->check(type, name);
    auto& known = state_->componentByContent;
    auto found = known.find({name, type.get()});
    if (found == known.end()) {
        const Component& added = state_->components->emplace(std::u16string(name), *type);
        found = known.emplace(State::ComponentKey(added.name_, type.get()), &added).first;
    }
    return {state_->components, found->second};
}

std::shared_ptr<Node> GraphBuilder::addNode(std::u16string id, std::u16string name,
                                            const std::shared_ptr<const Type>& type,
                                            std::vector<Property> properties) {
    state_->check(type, id);
    auto& nodes = *state_->nodes;
    if (state_->nodeIDs.contain(id, nodes.objects)) {
        throw GraphBuildError("second node with one ID", std::move(id));
    }
    KeyOrder keyOrder = keyOrderOf(properties);
    if (hasKeyTwice(properties, keyOrder)) {
        throw GraphBuildError("node with a property key given twice", std::move(id));
    }
    const Type& known = *type == *Type::FILE() ? *Type::FILE() : *type;
    const bool keepsOrder = properties.size() > fewProperties && !keyOrder.empty();
    Node& added = nodes.emplace(std::move(id), std::move(name), known, std::move(properties));
    try {
        if (keepsOrder) {
            nodes.keyOrders.emplace(added.index_, std::move(keyOrder));
        }
        state_->nodeIDs.add(added.getID());
    } catch (...) {
        nodes.keyOrders.erase(added.index_);
        nodes.objects.pop_back();
        throw;
    }
    return {state_->nodes, &added};
}

std::shared_ptr<Dependency> GraphBuilder::addDependency(
    std::u16string id, const std::shared_ptr<Node>& upstream,
    const std::shared_ptr<Node>& downstream, const std::shared_ptr<const Type>& type,
    const std::shared_ptr<const Component>& upstreamComponent,
    const std::shared_ptr<const Component>& downstreamComponent) {
    for (const auto& node : {std::cref(upstream), std::cref(downstream)}) {
        state_->check(node.get(), id);
    }
    state_->check(type, id);
    for (const auto& component : {std::cref(upstreamComponent), std::cref(downstreamComponent)}) {
        state_->check(component.get(), id);
    }
    auto& dependencies = *state_->dependencies;
    if (state_->dependencyIDs.contain(id, dependencies.objects)) {
        throw GraphBuildError("second dependency with one ID", std::move(id));
    }
    Dependency& added = dependencies.emplace(std::move(id), *upstream, *downstream, *type,
                                             *upstreamComponent, *downstreamComponent);
    try {
        state_->dependencyIDs.add(added.getID());
    } catch (...) {
        dependencies.objects.pop_back();
        throw;
    }
    return {state_->dependencies, &added};
}

void GraphBuilder::setProperty(std::u16string_view key, std::u16string value) {
    auto& properties = state_->properties;
    auto& propertyByKey = state_->propertyByKey;
    const auto found = propertyByKey.find(key);
    if (found != propertyByKey.end()) {
        properties[found->second].second = std::move(value);
        return;
    }
    std::map<std::u16string, std::size_t, std::less<>> added;
    added.emplace(key, properties.size());
    properties.emplace_back(key, std::move(value));
    propertyByKey.merge(added);
}

void GraphBuilder::setTimeStamp(const boost::posix_time::ptime& timeStamp) {
    state_->timeStamp = timeStamp;
}

std::shared_ptr<const Graph> GraphBuilder::finish() {
    auto next = std::make_unique<State>();
    const std::shared_ptr<Graph> graph(new Graph);
    const auto& nodes = state_->nodes;
    const auto& dependencies = state_->dependencies;

    graph->nodes_.reserve(nodes->objects.size());
    for (Node& node : nodes->objects) {
        graph->nodes_.emplace_back(nodes, &node);
    }
    auto& first = graph->firstDependency_;
    first.assign(nodes->objects.size() + 1, 0);
    for (const Dependency& dependency : dependencies->objects) {
        ++first[dependency.upstream_->index_ + std::size_t{1}];
    }
    for (std::size_t i = 1; i < first.size(); ++i) {
        first[i] += first[i - 1];
    }
    auto free = first;
    graph->dependencies_.resize(dependencies->objects.size());
    for (Dependency& dependency : dependencies->objects) {
        graph->dependencies_[free[dependency.upstream_->index_]++] = {dependencies, &dependency};
    }
    graph->keyOrder_ = keyOrderOf(state_->properties);
    graph->properties_ = std::move(state_->properties);
    graph->timeStamp_ = state_->timeStamp;
    state_ = std::move(next);
    return graph;
}

}  // namespace dependency::graph
