#pragma once
// How one node comes to need another one.
#include <string_view>
#include <vector>

#include <dependency/insight/export.h>
#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// Returns: the nodes of a shortest path of one link or more, both ends included, of several the
///          smallest sequence; empty if there is none.
/// Complexity: linear in nodes and links.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT std::vector<Number> findPath(const LinkGraph& graph,
                                                                     Side side, Number from,
                                                                     Number to);

/// Returns: the node of either side whose displayed ID is `text`, or else all whose displayed ID
///          ends in it: those in which a component begins there, or else all others.
/// Order:   ascending.
/// Requires: a separator that is not empty.
/// Complexity: linear in nodes.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT std::vector<Number> findNodes(
    const LinkGraph& graph, std::u16string_view text, std::u16string_view separator = u"/");

}  // namespace dependency::insight
