#pragma once
// Takes what it is given, unchecked.
#include <string_view>

#include <dependency/graph/graph.h>

namespace dependency::graph {

class GraphBuilder {
  public:
    static TypePointer type(std::u16string_view id, std::u16string_view name) {
        return std::make_shared<Type>(Type{std::u16string(id), std::u16string(name)});
    }
    static ComponentPointer component(std::u16string_view name, const TypePointer& type) {
        return std::make_shared<Component>(Component{std::u16string(name), type});
    }
    std::shared_ptr<Node> addNode(std::u16string id, std::u16string name, const TypePointer& type,
                                  std::vector<Property> properties = {}) {
        return graph_->nodes.emplace_back(std::make_shared<Node>(
            Node{{std::move(properties)}, std::move(id), std::move(name), type}));
    }
    std::shared_ptr<Dependency> addDependency(std::u16string id,
                                              const std::shared_ptr<Node>& upstream,
                                              const std::shared_ptr<Node>& downstream,
                                              const TypePointer& type, const ComponentPointer& from,
                                              const ComponentPointer& to) {
        return graph_->dependencies[upstream].emplace_back(std::make_shared<Dependency>(
            Dependency{std::move(id), upstream, downstream, type, from, to}));
    }
    void setProperty(std::u16string_view key, std::u16string value) {
        std::erase_if(graph_->properties,
                      [&](const Property& known) { return known.first == key; });
        graph_->properties.emplace_back(key, std::move(value));
    }
    void setTimeStamp(const boost::posix_time::ptime& time) { graph_->timeStamp = time; }
    [[nodiscard]] std::shared_ptr<const Graph> finish() {
        return std::exchange(graph_, std::make_shared<Graph>());
    }

  private:
    std::shared_ptr<Graph> graph_ = std::make_shared<Graph>();
};

}  // namespace dependency::graph
