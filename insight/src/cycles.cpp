#include <dependency/insight/cycles.h>

#include <algorithm>
#include <iterator>

#include <boost/pending/disjoint_sets.hpp>

#include "components.h"
#include "shortest_cycle.h"

namespace dependency::insight {

namespace {

/// The cycle groups of one side.
struct Groups {
    std::vector<Number> of;                  // by node; `none` for one that is in no group
    std::vector<std::vector<Number>> nodes;  // by group, in the order of their smallest nodes
};

Groups findGroups(const LinkGraph& graph, Side side, Strength strength) {
    const Components components = findComponents(graph, side, strength);
    std::vector<Number> sizes(components.count);
    for (const Number component : components.of) {
        ++sizes[component];
    }
    Groups groups{.of = std::vector<Number>(graph.nodeCount(), none), .nodes = {}};
    std::vector<Number> groupOfComponent(components.count, none);
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        const Number component = components.of[node];
        if (sizes[component] == 1) {
            const auto* const loop = graph.find(Link{node, node});
            if (loop == nullptr || !loop->on(side, strength)) {
                continue;
            }
        }
        Number& group = groupOfComponent[component];
        if (group == none) {
            group = static_cast<Number>(groups.nodes.size());
            groups.nodes.emplace_back();
        }
        groups.of[node] = group;
        groups.nodes[group].push_back(node);
    }
    return groups;
}

/// Families by number, in the order of their smallest nodes.
std::vector<CycleFamily> findFamilies(const BySide<Groups>& groups, Number nodeCount) {
    const auto leftCount = static_cast<Number>(groups.left.nodes.size());
    const auto count = leftCount + groups.right.nodes.size();
    boost::disjoint_sets_with_storage<> sets(count);
    for (Number node = 0; node < nodeCount; ++node) {
        if (groups.left.of[node] != none && groups.right.of[node] != none) {
            sets.union_set(groups.left.of[node], leftCount + groups.right.of[node]);
        }
    }
    std::vector<CycleFamily> families;
    std::vector<std::size_t> familyOf(count, count);  // by representative
    std::vector<bool> isTaken(count);
    for (Number node = 0; node < nodeCount; ++node) {
        for (const Side side : sides) {
            const Number group = groups[side].of[node];
            const std::size_t member = side == Side::left ? group : std::size_t{leftCount} + group;
            if (group == none || isTaken[member]) {
                continue;
            }
            isTaken[member] = true;
            std::size_t& family = familyOf[sets.find_set(member)];
            if (family == count) {
                family = families.size();
                families.emplace_back();
            }
            families[family].groups[side].push_back(groups[side].nodes[group]);
        }
    }
    return families;
}

std::vector<Number> nodesOf(const std::vector<std::vector<Number>>& groups) {
    std::vector<Number> nodes;
    for (const auto& group : groups) {
        nodes.insert(nodes.end(), group.begin(), group.end());
    }
    std::ranges::sort(nodes);
    return nodes;
}

}  // namespace

Cycles findCycles(const LinkGraph& graph, Strength strength) {
    const BySide<Groups> groups{findGroups(graph, Side::left, strength),
                                findGroups(graph, Side::right, strength)};
    // Returns: the links inside groups of a side that the other side lacks.
    const auto linksOfOneSide = [&](const std::vector<Number>& nodes, Side side) {
        const auto& groupOf = groups[side].of;
        std::vector<Link> links;
        for (const Number node : nodes) {
            for (const LinkEnd& end : graph.from(node)) {
                if (end.state.on(side, strength) && !end.state.on(otherSide(side), strength) &&
                    groupOf[node] == groupOf[end.node]) {
                    links.push_back({node, end.node});
                }
            }
        }
        return links;
    };
    Cycles cycles{.groups = {groups.left.nodes.size(), groups.right.nodes.size()},
                  .unchanged = 0,
                  .families = findFamilies(groups, graph.nodeCount())};
    std::erase_if(cycles.families, [&](const CycleFamily& family) {
        const bool isUnchanged =
            family.groups.left.size() == 1 && family.groups.left == family.groups.right;
        cycles.unchanged += isUnchanged ? 1 : 0;
        return isUnchanged;
    });
    if (cycles.families.empty()) {
        return cycles;
    }
    using Through = ShortestCycle::Through;
    BySide<ShortestCycle> shortest{{graph, Side::left, strength, groups.left.of},
                                   {graph, Side::right, strength, groups.right.of}};
    for (CycleFamily& family : cycles.families) {
        const BySide<std::vector<Number>> nodes{nodesOf(family.groups.left),
                                                nodesOf(family.groups.right)};
        family.opened = linksOfOneSide(nodes.left, Side::left);
        family.closing = linksOfOneSide(nodes.right, Side::right);
        if (nodes.right.empty()) {
            family.edit = CycleEdit::removed;
            family.cycle = shortest.left.find(nodes.left, Through::anyLink);
        } else {
            family.edit = nodes.left.empty() ? CycleEdit::added : CycleEdit::changed;
            family.cycle = shortest.right.find(nodes.right, Through::linksOfThisSideOnly);
        }
    }
    return cycles;
}

}  // namespace dependency::insight
