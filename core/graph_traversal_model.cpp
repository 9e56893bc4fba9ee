#include <dependency/comparisons/graph_traversal_model.h>

#include <algorithm>
#include <iterator>
#include <tuple>

#include "core/file_nodes.h"
#include "core/sort_key.h"

namespace dependency::comparisons {

namespace {

std::vector<Item> childrenOf(const graph::Graph& graph) {
    auto files = fileNodes(graph);
    std::ranges::sort(
        files, {}, [](const auto& file) -> const auto& { return file->getID(); });
    return {std::make_move_iterator(files.begin()), std::make_move_iterator(files.end())};
}

std::vector<Item> childrenOf(const std::shared_ptr<const graph::Graph>& graph,
                             const std::shared_ptr<graph::Node>& node) {
    struct Keyed {
        SortKey key;
        ParallelDependencies group;
    };
    std::vector<Keyed> keyed;
    for (auto& group : ParallelDependencies::createParallelDependencies(graph, node)) {
        SortKey key = sortKeyOf(*group.downstream);
        keyed.push_back({.key = std::move(key), .group = std::move(group)});
    }
    // The order of groups with equal sort keys is ours to choose: by downstream ID, so that both
    // sides and every run agree.
    std::ranges::sort(keyed, {}, [](const Keyed& entry) {
        return std::tie(entry.key, entry.group.downstream->getID());
    });
    std::vector<Item> children;
    children.reserve(keyed.size());
    for (auto& entry : keyed) {
        children.emplace_back(std::move(entry.group));
    }
    return children;
}

struct Children {
    const std::shared_ptr<const graph::Graph>& modelGraph;

    std::vector<Item> operator()(const std::shared_ptr<const graph::Graph>& graph) const {
        return childrenOf(*graph);
    }
    std::vector<Item> operator()(const std::shared_ptr<graph::Node>& node) const {
        return childrenOf(modelGraph, node);
    }
    std::vector<Item> operator()(const ParallelDependencies& /*leaf*/) const { return {}; }
};

}  // namespace

std::vector<Item> GraphTraversalModel::operator()(const Item& item) const {
    return std::visit(Children{graph_}, item);
}

}  // namespace dependency::comparisons
