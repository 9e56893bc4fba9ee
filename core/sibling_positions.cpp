#include "core/sibling_positions.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "core/sort_key.h"

namespace dependency::comparisons {

namespace {

// Returns: by node number, the place among all nodes in the order of groups that lead to them.
std::vector<Number> orderAsDownstream(const SideIndex& side) {
    std::vector<SortKey> keys;
    keys.reserve(side.nodes.size());
    for (const auto& node : side.nodes) {
        keys.push_back(sortKeyOf(*node));
    }
    std::vector<Number> nodes(side.nodes.size());
    std::iota(nodes.begin(), nodes.end(), Number{0});
    std::ranges::sort(nodes, {},
                      [&](Number node) { return std::tie(keys[node], side.rankOf[node]); });
    std::vector<Number> order(nodes.size());
    for (Number place = 0; place < nodes.size(); ++place) {
        order[nodes[place]] = place;
    }
    return order;
}

}  // namespace

std::vector<Number> siblingPositions(const SideIndex& side) {
    std::vector<Number> positions(side.itemCount());
    Number position = 0;
    for (const Number node : side.nodeAt) {
        if (node < side.fileCount) {
            positions[node] = position++;
        }
    }
    const auto order = orderAsDownstream(side);
    std::vector<Number> siblings;
    for (Number file = 0; file < side.fileCount; ++file) {
        siblings.resize(side.firstGroup[file + 1] - side.firstGroup[file]);
        std::iota(siblings.begin(), siblings.end(), side.firstGroup[file]);
        std::ranges::sort(siblings, {},
                          [&](Number group) { return order[side.groups[group].downstream]; });
        for (Number place = 0; place < siblings.size(); ++place) {
            positions[side.itemOfGroup(siblings[place])] = place;
        }
    }
    return positions;
}

}  // namespace dependency::comparisons
