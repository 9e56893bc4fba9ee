#pragma once
// The nodes of a graph that take part in a comparison.
#include <memory>
#include <vector>

#include <dependency/graph/graph.h>

namespace dependency::comparisons {

/// Returns: the nodes whose type is the file type.
/// Order:   that of the graph.
[[nodiscard]] inline std::vector<std::shared_ptr<graph::Node>> fileNodes(
    const graph::Graph& graph) {
    std::vector<std::shared_ptr<graph::Node>> files;
    for (const auto& node : graph.getNodes()) {
        if (*node->getType() == *graph::Type::FILE()) {
            files.push_back(node);
        }
    }
    return files;
}

}  // namespace dependency::comparisons
