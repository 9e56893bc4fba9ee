#pragma once
// The part of a node that a dependency starts from or ends at.
#include <memory>
#include <string>

#include <dependency/graph/type.h>

namespace dependency::graph {

struct ComponentStorage;

/// A named part of a node, for example a block inside a file. Made by `GraphBuilder::component`.
class DEPENDENCY_GRAPH_EXPORT Component {
  public:
    /// Returns: empty if the dependency concerns the node as a whole.
    [[nodiscard]] std::u16string getName() const { return name_; }
    [[nodiscard]] std::shared_ptr<const Type> getType() const;

  private:
    friend struct ComponentStorage;
    friend class GraphBuilder;
    friend class Dependency;

    Component(std::u16string name, const Type& type, const ComponentStorage* owner)
        : name_(std::move(name)), type_(&type), owner_(owner) {}

    std::u16string name_;
    const Type* type_;
    const ComponentStorage* owner_;
};

}  // namespace dependency::graph
