#include <dependency/graph/graph.h>

#include <boost/range/iterator_range.hpp>

#include "properties.h"
#include "storage.h"

namespace dependency::graph {

Graph::Graph() = default;
Graph::~Graph() = default;

NodeRange Graph::getNodes() const {
    return NodeRange(nodes_);
}

DependencyRange Graph::getDownstreamDependencies(const std::shared_ptr<Node>& upstream) const {
    const std::size_t index = upstream->index_;
    if (index >= nodes_.size() || nodes_[index] != upstream) {
        return {};
    }
    const auto* const first = dependencies_.data();
    return DependencyRange(first + firstDependency_[index], first + firstDependency_[index + 1]);
}

std::vector<std::u16string> Graph::getPropertyKeys() const {
    return keysOf(properties_);
}

std::u16string Graph::getProperty(const std::u16string& key) const {
    return valueOf(properties_, keyOrder_, key);
}

boost::posix_time::ptime getTimeStamp(const Graph& graph) {
    return graph.timeStamp_;
}

}  // namespace dependency::graph
