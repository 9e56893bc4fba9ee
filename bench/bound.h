#pragma once
// The floor that every ratio refers to: the least work that pairs two graphs, in plain C++ over the
// same graph objects.
#include <array>
#include <memory>
#include <vector>

#include <dependency/graph/graph.h>

#include "generator.h"

namespace depcompare::bench {

/// A file or a group; by side, null where it does not exist.
struct BoundItem {
    std::array<const dependency::graph::Node*, 2> upstream{};    ///< of a file, the file itself
    std::array<const dependency::graph::Node*, 2> downstream{};  ///< of a group only
    bool changed = false;
};

struct BoundResult {
    std::vector<BoundItem> items;
    ItemCounts counts;  ///< changed files are not looked for and always 0
};

/// Pairs files by ID, and groups by the IDs of both ends, and tells which groups differ: end nodes
/// and dependencies in ID order, by the graph's own equality.
///
/// Every node ID is hashed once; from there on nodes are numbers. It does not compare properties,
/// makes no strings, no tree and no details, and takes IDs apart that only joined would be equal.
/// Lifetime: the items point into both graphs.
[[nodiscard]] BoundResult pairAtTheBound(
    const std::shared_ptr<const dependency::graph::Graph>& left,
    const std::shared_ptr<const dependency::graph::Graph>& right);

}  // namespace depcompare::bench
