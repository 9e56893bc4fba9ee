#include <dependency/insight/paths.h>

#include <algorithm>

#include "breadth_first.h"

namespace dependency::insight {

std::vector<Number> findPath(const LinkGraph& graph, Side side, Number from, Number to) {
    return BreadthFirst(graph, side).pathToFirst(from, [&](Number node) { return node == to; });
}

std::vector<Number> findNodes(const LinkGraph& graph, std::u16string_view text,
                              std::u16string_view separator) {
    if (const auto exact = graph.find(text)) {
        return {*exact};
    }
    std::vector<Number> components;
    std::vector<Number> parts;
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        const auto id = graph.id(node);
        if (id.ends_with(text)) {
            const bool begins = text.starts_with(separator) ||
                                id.substr(0, id.size() - text.size()).ends_with(separator);
            (begins ? components : parts).push_back(node);
        }
    }
    return components.empty() ? parts : components;
}

}  // namespace dependency::insight
