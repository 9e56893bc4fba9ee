#pragma once
// Strongly connected components of one side, or of a part of it.
#include <utility>
#include <vector>

#include <dependency/insight/link_graph.h>

namespace dependency::insight {

struct Components {
    std::vector<Number> of;  ///< by node; a link never leads to a component with a greater number
    Number count = 0;
};

/// Requires: links sorted by upstream node.
[[nodiscard]] Components findComponents(Number nodeCount,
                                        const std::vector<std::pair<Number, Number>>& links);

[[nodiscard]] Components findComponents(const LinkGraph& graph, Side side, Strength strength);

}  // namespace dependency::insight
