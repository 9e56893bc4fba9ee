#pragma once
// One edge of a dependency graph, from an upstream node to a downstream node.
#include <memory>
#include <string>
#include <tuple>

#include <dependency/graph/component.h>
#include <dependency/graph/node.h>

namespace dependency::graph {

struct DependencyStorage;

/// A dependency of one graph. Made by `GraphBuilder::addDependency`, never changed afterwards.
///
/// Lifetime: a pointer to one dependency keeps all dependencies and nodes of its graph alive.
class DEPENDENCY_GRAPH_EXPORT Dependency {
  public:
    /// Returns: the ID, unique within the graph; valid as long as this dependency.
    [[nodiscard]] const std::u16string& getID() const noexcept { return id_; }
    [[nodiscard]] std::shared_ptr<Node> getUpstreamNode() const;
    [[nodiscard]] std::shared_ptr<Node> getDownstreamNode() const;
    [[nodiscard]] std::shared_ptr<const Type> getType() const;
    [[nodiscard]] std::shared_ptr<const Component> getUpstreamComponent() const;
    [[nodiscard]] std::shared_ptr<const Component> getDownstreamComponent() const;

  private:
    friend struct DependencyStorage;
    friend class GraphBuilder;
    friend DEPENDENCY_GRAPH_EXPORT bool operator==(const Dependency& a,
                                                   const Dependency& b) noexcept;
    friend DEPENDENCY_GRAPH_EXPORT bool operator<(const Dependency& a,
                                                  const Dependency& b) noexcept;

    using Text = const std::u16string&;
    using Ends = std::tuple<Text, Text, Text>;
    using ComponentKey = std::tuple<Text, Text, Text, Text>;
    using Key = std::tuple<Text, Text, Text, Text, Text, Text, Text>;
    [[nodiscard]] ComponentKey componentKey() const noexcept;
    [[nodiscard]] Key key() const noexcept;
    [[nodiscard]] bool sameContent(const Dependency& other) const noexcept;

    Dependency(std::u16string id, Node& upstream, Node& downstream, const Type& type,
               const Component& upstreamComponent, const Component& downstreamComponent,
               const DependencyStorage* owner)
        : id_(std::move(id)),
          upstream_(&upstream),
          downstream_(&downstream),
          type_(&type),
          upstreamComponent_(&upstreamComponent),
          downstreamComponent_(&downstreamComponent),
          owner_(owner) {}

    std::u16string id_;
    Node* upstream_;
    Node* downstream_;
    const Type* type_;
    const Component* upstreamComponent_;
    const Component* downstreamComponent_;
    const DependencyStorage* owner_;
};

/// Dependencies are equal in content when their types, the IDs of their end nodes, and the names
/// and types of their components are; their own IDs take no part.
[[nodiscard]] DEPENDENCY_GRAPH_EXPORT bool operator==(const Dependency& a,
                                                      const Dependency& b) noexcept;

/// Order: by type ID, upstream node ID, downstream node ID, upstream component name, downstream
/// component name, upstream component type ID, downstream component type ID, each by code unit.
/// Equal dependencies are not less than each other.
[[nodiscard]] DEPENDENCY_GRAPH_EXPORT bool operator<(const Dependency& a,
                                                     const Dependency& b) noexcept;

}  // namespace dependency::graph
