#pragma once
// From matched items to a tree: one entry per edit, linked as each side's model lists children.
#include <array>
#include <vector>

#include <comparisons/tree_comparison.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_traversal_model.h>

namespace dependency::comparisons {

/// Fills `tree` with one entry per edit, in their order.
///
/// Requires: the first edit is that of the two graphs; `models` by side.
/// Returns:  the vertex of the first edit.
/// Throws:   `UnmatchedItemError` where `edits` lack an item that a model lists.
GraphComparison::Vertex buildTree(GraphComparison::Tree& tree, std::vector<ItemEdit> edits,
                                  const std::array<GraphTraversalModel, 2>& models);

}  // namespace dependency::comparisons
