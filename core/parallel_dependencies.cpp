#include <dependency/comparisons/parallel_dependencies.h>

#include <algorithm>
#include <unordered_map>

#include "core/sort_key.h"

namespace dependency::comparisons {

ParallelDependencies::ParallelDependencies(const std::shared_ptr<graph::Node>& upstreamNode,
                                           const std::shared_ptr<graph::Node>& downstreamNode,
                                           const Dependencies& group)
    : upstream(upstreamNode),
      downstream(downstreamNode),
      dependencies(group),
      id(upstreamNode->getID() + downstreamNode->getID()) {}

std::vector<ParallelDependencies> ParallelDependencies::createParallelDependencies(
    const std::shared_ptr<const graph::Graph>& graph,
    const std::shared_ptr<graph::Node>& upstream) {
    std::unordered_map<std::shared_ptr<graph::Node>, Dependencies> byDownstream;
    for (const auto& dependency : graph->getDownstreamDependencies(upstream)) {
        byDownstream[dependency->getDownstreamNode()].insert(dependency);
    }
    std::vector<ParallelDependencies> groups;
    groups.reserve(byDownstream.size());
    for (auto& [downstream, dependencies] : byDownstream) {
        auto& group = groups.emplace_back(upstream, downstream, Dependencies());
        group.dependencies = std::move(dependencies);
    }
    return groups;
}

namespace detail {

bool equalImpl(const ParallelDependencies& a, const ParallelDependencies& b) {
    return a.upstream == b.upstream && a.downstream == b.downstream &&
           std::ranges::equal(a.dependencies, b.dependencies);
}

bool lessThanImpl(const ParallelDependencies& a, const ParallelDependencies& b) {
    return sortKeyOf(*a.downstream) < sortKeyOf(*b.downstream);
}

}  // namespace detail

}  // namespace dependency::comparisons
