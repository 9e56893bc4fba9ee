#pragma once
// The tree shape of a dependency graph: graph, files, groups of parallel dependencies.
#include <memory>
#include <vector>

#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// Gives the children of an item in display order. Keeps its graph alive.
class DEPENDENCY_COMPARISONS_EXPORT GraphTraversalModel {
  public:
    /// Requires: non-null, for the children of nodes.
    explicit GraphTraversalModel(const std::shared_ptr<const graph::Graph>& graph)
        : graph_(graph) {}

    /// Returns: of a graph, its file nodes; of a node, its groups of outgoing dependencies in the
    ///          model's graph, to nodes of any type; of a group, nothing.
    /// Order:   files by ID; groups by downstream type ID, lower-cased downstream name, and, if those
    ///          are equal, downstream ID.
    /// Throws:  `std::bad_variant_access` for a valueless item, and what the graph throws.
    [[nodiscard]] std::vector<Item> operator()(const Item& item) const;

  private:
    std::shared_ptr<const graph::Graph> graph_;
};

}  // namespace dependency::comparisons
