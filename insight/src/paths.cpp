#include <dependency/insight/paths.h>

#include <algorithm>

#include "breadth_first.h"

namespace dependency::insight {

std::vector<Number> findPath(const LinkGraph& graph, Side side, Number from, Number to) {
    return BreadthFirst(graph, side).pathToFirst(from, [&](Number node) { return node == to; });
}

std::vector<Number> findNodes(const LinkGraph& graph, std::u16string_view text) {
    if (const auto exact = graph.find(text)) {
        return {*exact};
    }
    std::vector<Number> nodes;
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        if (graph.id(node).ends_with(text)) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

}  // namespace dependency::insight
