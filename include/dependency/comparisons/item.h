#pragma once
// What a comparison tree holds.
#include <memory>
#include <optional>
#include <variant>

#include <comparisons/stateful_edit.h>
#include <dependency/comparisons/parallel_dependencies.h>
#include <dependency/graph/graph.h>

namespace dependency::comparisons {

/// A whole graph, a node or a group of parallel dependencies. Items compare and hash as the
/// standard library defines it: graphs and nodes by identity, groups by their `operator==`.
using Item = std::variant<std::shared_ptr<const graph::Graph>, std::shared_ptr<graph::Node>,
                          ParallelDependencies>;

/// A pair of matched items, or an item that exists on one side only.
using ItemEdit = ::comparisons::StatefulEdit<std::optional<Item>, 2>;

}  // namespace dependency::comparisons
