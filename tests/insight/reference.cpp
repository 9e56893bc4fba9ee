#include "insight/reference.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

namespace dependency::test {

using namespace insight;

namespace {

using Nodes = std::set<Number>;
using Links = std::set<Link>;
using Path = std::vector<Number>;
using Groups = std::vector<std::vector<Number>>;

template <class Set>
Set minus(Set a, const Set& b) {
    std::erase_if(a, [&](const auto& x) { return b.contains(x); });
    return a;
}

template <class Set>
auto listOf(const Set& set) {
    return std::vector(set.begin(), set.end());
}

// What a path of one link or more leads to.
std::vector<Nodes> closureOf(const Links& links, std::size_t count) {
    std::vector<Nodes> reached(count);
    for (const auto& [from, to] : links) {
        reached[from].insert(to);
    }
    for (Number via = 0; via < count; ++via) {
        const Nodes further = reached[via];
        for (Nodes& nodes : reached) {
            if (nodes.contains(via)) {
                nodes.insert(further.begin(), further.end());
            }
        }
    }
    return reached;
}

// The smallest of the shortest wanted walks that visit no node twice, but may end at their start.
Path shortestWalk(const Links& links, const Nodes& starts,
                  const std::function<bool(const Path&)>& isWanted) {
    std::vector<Path> walks;
    std::ranges::transform(starts, std::back_inserter(walks), [](Number n) { return Path{n}; });
    while (!walks.empty()) {
        std::vector<Path> longer;
        for (const Path& walk : walks) {
            for (const auto& [from, to] : links) {
                const bool closes = to == walk.front();
                if (from == walk.back() && (closes || std::ranges::count(walk, to) == 0)) {
                    Path next = walk;
                    next.push_back(to);
                    if (isWanted(next)) {
                        return next;
                    }
                    if (!closes) {
                        longer.push_back(std::move(next));
                    }
                }
            }
        }
        walks = std::move(longer);
    }
    return {};
}

Path shortestCycle(const Links& links, const Links& candidates) {
    Nodes starts;
    for (const auto& link : candidates.empty() ? candidates : links) {
        starts.insert(link.upstream);
    }
    Path cycle = shortestWalk(links, starts, [&](const Path& walk) {
        bool through = false;
        for (std::size_t i = 0; i + 1 < walk.size(); ++i) {
            through |= candidates.contains({walk[i], walk[i + 1]});
        }
        return through && walk.front() == walk.back() && std::ranges::min(walk) == walk.front();
    });
    cycle.resize(cycle.empty() ? 0 : cycle.size() - 1);
    return cycle;
}

Links inside(const Groups& groups, Links links) {
    std::erase_if(links, [&](const Link& link) {
        return std::ranges::none_of(groups, [&](const auto& group) {
            return std::ranges::count(group, link.upstream) != 0 &&
                   std::ranges::count(group, link.downstream) != 0;
        });
    });
    return links;
}

Links linksOf(const LinkGraph& graph, Side side, Strength strength = Strength::all) {
    Links links;
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        for (const LinkEnd& end : graph.from(node)) {
            if (end.state.on(side, strength)) {
                links.insert({node, end.node});
            }
        }
    }
    return links;
}

}  // namespace

Cycles referenceCycles(const LinkGraph& graph, Strength strength) {
    BySide<Links> links;
    BySide<std::set<Nodes>> groups;
    Links together;
    for (const Side side : sides) {
        links[side] = linksOf(graph, side, strength);
        const auto reached = closureOf(links[side], graph.nodeCount());
        for (Number node = 0; node < graph.nodeCount(); ++node) {
            Nodes group = reached[node];
            std::erase_if(group, [&](Number n) { return !reached[n].contains(node); });
            for (const Number other : group) {
                together.insert({node, other});
            }
            groups[side].insert(group);
        }
        groups[side].erase(Nodes());
    }
    const auto families = closureOf(together, graph.nodeCount());
    Cycles result;
    result.groups = {groups.left.size(), groups.right.size()};
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        if (families[node].empty() || *families[node].begin() != node) {
            continue;
        }
        CycleFamily family;
        for (const Side side : sides) {
            for (const Nodes& group : groups[side]) {
                if (families[node].contains(*group.begin())) {
                    family.groups[side].push_back(listOf(group));
                }
            }
        }
        const auto& [left, right] = family.groups;
        if (left.size() == 1 && left == right) {
            ++result.unchanged;
            continue;
        }
        family.edit = left.empty()    ? CycleEdit::added
                      : right.empty() ? CycleEdit::removed
                                      : CycleEdit::changed;
        const Links leftInside = inside(left, links.left);
        const Links rightInside = inside(right, links.right);
        const Links closing = minus(rightInside, links.left);
        family.closing = listOf(closing);
        family.opened = listOf(minus(leftInside, links.right));
        family.cycle = right.empty() ? shortestCycle(leftInside, leftInside)
                                     : shortestCycle(rightInside, closing);
        result.families.push_back(family);
    }
    return result;
}

Reach referenceReach(const LinkGraph& graph) {
    Reach result;
    BySide<std::vector<Nodes>> reached;
    for (const Side side : sides) {
        reached[side] = closureOf(linksOf(graph, side), graph.nodeCount());
        std::size_t nodes = 0;
        std::size_t files = 0;
        SideReach& sums = result.sides[side];
        for (Number node = 0; node < graph.nodeCount(); ++node) {
            reached[side][node].erase(node);
            nodes += graph.has(node, side) ? 1 : 0;
            files += graph.isFile(node, side) ? 1 : 0;
            sums.pairs += graph.isFile(node, side) ? reached[side][node].size() : 0;
        }
        if (files != 0 && nodes > 1) {
            sums.cost = static_cast<double>(sums.pairs) / static_cast<double>(files) /
                        static_cast<double>(nodes - 1);
        }
    }
    const auto& [left, right] = reached;
    const Links links = linksOf(graph, Side::right);
    const auto number = [](const auto& list) { return static_cast<Number>(list.size()); };
    for (Number file = 0; file < graph.nodeCount(); ++file) {
        const Nodes gained = minus(right[file], left[file]);
        const Nodes lost = minus(left[file], right[file]);
        if (graph.isFile(file, Side::left) && graph.isFile(file, Side::right) &&
            gained.size() + lost.size() != 0) {
            const auto isGain = [&](const Path& walk) { return gained.contains(walk.back()); };
            result.files.push_back(
                {.file = file,
                 .reach = {number(left[file]), number(right[file])},
                 .gained = number(gained),
                 .lost = number(lost),
                 .path = shortestWalk(links, gained.empty() ? Nodes() : Nodes{file}, isGain)});
        }
    }
    for (const Link& link : minus(links, linksOf(graph, Side::left))) {
        if (graph.has(link.upstream, Side::left)) {
            Nodes gained = right[link.downstream];
            gained.insert(link.downstream);
            gained = minus(minus(gained, left[link.upstream]), {link.upstream});
            Number dependents = 0;
            for (Number file = 0; file < graph.nodeCount(); ++file) {
                dependents +=
                    graph.isFile(file, Side::right) && right[file].contains(link.upstream) ? 1 : 0;
            }
            result.links.push_back(
                {.link = link, .gained = number(gained), .dependents = dependents});
        }
    }
    std::ranges::stable_sort(result.files, std::greater(),
                             [](const FileReach& file) { return file.gained + file.lost; });
    std::ranges::stable_sort(result.links, std::greater(), [](const LinkReach& link) {
        return link.gained * (link.dependents + 1);
    });
    return result;
}

}  // namespace dependency::test
