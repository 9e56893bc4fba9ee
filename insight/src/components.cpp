#include "components.h"

#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/strong_components.hpp>

namespace dependency::insight {

Components findComponents(Number nodeCount, const std::vector<std::pair<Number, Number>>& links) {
    using Rows =
        boost::compressed_sparse_row_graph<boost::directedS, boost::no_property, boost::no_property,
                                           boost::no_property, Number, std::size_t>;
    const Rows rows(boost::edges_are_sorted, links.begin(), links.end(), nodeCount, links.size());
    Components components{.of = std::vector<Number>(nodeCount), .count = 0};
    if (nodeCount != 0) {
        const auto index = boost::get(boost::vertex_index, rows);
        components.count = boost::strong_components(
            rows, boost::make_iterator_property_map(components.of.begin(), index));
    }
    return components;
}

Components findComponents(const LinkGraph& graph, Side side, Strength strength) {
    std::vector<std::pair<Number, Number>> links;
    links.reserve(graph.linkCount());
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        for (const LinkEnd& end : graph.from(node)) {
            if (end.state.on(side, strength)) {
                links.emplace_back(node, end.node);
            }
        }
    }
    return findComponents(graph.nodeCount(), links);
}

}  // namespace dependency::insight
