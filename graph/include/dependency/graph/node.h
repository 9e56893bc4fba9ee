#pragma once
// One analysed item of a project: a file, or an item of the kind that its type names.
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <dependency/graph/type.h>

namespace dependency::graph {

struct NodeStorage;

/// A property's key and its value.
using Property = std::pair<std::u16string, std::u16string>;

/// A node of one graph. Made by `GraphBuilder::addNode`, never changed afterwards.
///
/// Lifetime: a pointer to one node keeps all nodes of its graph alive.
class DEPENDENCY_GRAPH_EXPORT Node {
  public:
    /// Returns: the ID, unique within the graph; valid as long as this node.
    [[nodiscard]] const std::u16string& getID() const noexcept { return id_; }
    [[nodiscard]] std::u16string getName() const { return name_; }
    [[nodiscard]] std::shared_ptr<const Type> getType() const;

    /// Order: as given to the builder; no key occurs twice.
    [[nodiscard]] std::vector<std::u16string> getPropertyKeys() const;

    /// Throws: `std::out_of_range` for a key that `getPropertyKeys` does not list.
    /// Complexity: logarithmic in the number of properties.
    [[nodiscard]] std::u16string getProperty(const std::u16string& key) const;

  private:
    friend struct NodeStorage;
    friend class Graph;
    friend class GraphBuilder;
    friend DEPENDENCY_GRAPH_EXPORT bool operator==(const Node& a, const Node& b) noexcept;

    Node(std::u16string id, std::u16string name, const Type& type, std::vector<Property> properties,
         std::uint32_t index, const NodeStorage* owner)
        : id_(std::move(id)),
          name_(std::move(name)),
          type_(&type),
          properties_(std::move(properties)),
          owner_(owner),
          index_(index) {}

    std::u16string id_;
    std::u16string name_;
    const Type* type_;
    std::vector<Property> properties_;
    const NodeStorage* owner_;
    std::uint32_t index_;
};

/// Nodes are equal in content when their IDs, names and types are; properties take no part.
[[nodiscard]] DEPENDENCY_GRAPH_EXPORT bool operator==(const Node& a, const Node& b) noexcept;

}  // namespace dependency::graph
