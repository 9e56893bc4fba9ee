#pragma once
// Pairing by identity: which files and groups of two graphs belong together, and which pairs
// differ.
#include <memory>
#include <vector>

#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// Pairs the graphs, their file nodes and the groups of dependencies that leave a file node.
///
/// Nodes pair by ID, groups by the upstream ID followed by the downstream ID; both kinds share one
/// key space. Of several items of one side with one key only one is kept: a node rather than a
/// group, and else the last collected. The state of an edit is true if both sides are present and
/// differ: graphs and nodes by their properties (keys, their order, values), groups by the content
/// of their end nodes and dependencies; items of different kinds count as equal.
///
/// Requires: both non-null.
/// Returns:  one edit per key, keeping both graphs alive; the pair of graphs first.
/// Order:    none after the first.
/// Throws:   `std::length_error` for graphs with 2^32 - 1 or more nodes and dependencies in all;
///           what the graph model or an allocation throws.
/// Threads:  any number of calls at a time.
/// Complexity: linear in files, groups and dependencies, plus the sort of IDs, whatever the IDs.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT std::vector<ItemEdit> matchGraphs(
    const std::shared_ptr<const graph::Graph>& left,
    const std::shared_ptr<const graph::Graph>& right);

}  // namespace dependency::comparisons
