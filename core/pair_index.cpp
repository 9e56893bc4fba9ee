#include "core/pair_index.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "core/file_nodes.h"

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

Number numberOf(std::shared_ptr<graph::Node> node, SideIndex& side, NodeNumbers& numbers) {
    const auto fresh = static_cast<Number>(side.nodes.size());
    const Number number = numbers.findOrAdd(node.get(), fresh);
    if (number == fresh) {
        side.nodes.push_back(std::move(node));
    }
    return number;
}

// A dependency on its way into a group.
struct FoundLink {
    Number downstream = 0;  // node number, later rank
    Number order = 0;       // place among the dependencies of its file
    Link dependency = nullptr;
};

struct FoundLinks {
    std::vector<FoundLink> links;  // by file
    std::vector<Number> first;     // by file, and one past the last
};

FoundLinks findLinks(SideIndex& side) {
    NodeNumbers numbers;
    side.nodes = fileNodes(*side.graph);
    side.fileCount = static_cast<Number>(side.nodes.size());
    for (Number file = 0; file < side.fileCount; ++file) {
        numbers.findOrAdd(side.nodes[file].get(), file);
    }
    FoundLinks found;
    found.first.reserve(side.fileCount + std::size_t{1});
    for (Number file = 0; file < side.fileCount; ++file) {
        found.first.push_back(static_cast<Number>(found.links.size()));
        Number order = 0;
        for (const auto& dependency : side.graph->getDownstreamDependencies(side.nodes[file])) {
            found.links.push_back(
                {.downstream = numberOf(dependency->getDownstreamNode(), side, numbers),
                 .order = order++,
                 .dependency = &dependency});
        }
    }
    found.first.push_back(static_cast<Number>(found.links.size()));
    if (side.nodes.size() + found.links.size() >= none) {
        throw std::length_error("a graph with more nodes and dependencies than can be numbered");
    }
    return found;
}

void rankNodes(PairIndex& index) {
    std::unordered_map<std::u16string_view, Number> numbers;
    numbers.reserve(index.sides[0].nodes.size() + index.sides[1].nodes.size());
    for (SideIndex& side : index.sides) {
        side.rankOf.reserve(side.nodes.size());
        for (const auto& node : side.nodes) {
            const auto number = static_cast<Number>(numbers.size());
            const auto [found, added] = numbers.try_emplace(node->getID(), number);
            if (added) {
                index.ids.emplace_back(node->getID());
            }
            side.rankOf.push_back(found->second);
        }
    }
    std::vector<Number> byID(index.ids.size());
    std::iota(byID.begin(), byID.end(), Number{0});
    std::ranges::sort(byID, {}, [&](Number number) { return index.ids[number]; });
    std::vector<Number> rankOfNumber(byID.size());
    std::vector<std::u16string_view> sorted;
    sorted.reserve(byID.size());
    for (const Number number : byID) {
        rankOfNumber[number] = static_cast<Number>(sorted.size());
        sorted.push_back(index.ids[number]);
    }
    index.ids = std::move(sorted);
    for (SideIndex& side : index.sides) {
        side.nodeAt.assign(byID.size(), none);
        for (Number node = 0; node < side.nodes.size(); ++node) {
            side.rankOf[node] = rankOfNumber[side.rankOf[node]];
            side.nodeAt[side.rankOf[node]] = node;
        }
    }
}

// Sorts the links of one file by downstream rank, then by dependency ID; of several with one ID the
// first comes first.
void sortLinks(std::span<FoundLink> links) {
    std::ranges::sort(links, {}, &FoundLink::downstream);
    const auto place = [](const FoundLink& link) {
        return std::tie((*link.dependency)->getID(), link.order);
    };
    while (!links.empty()) {
        const auto end = std::ranges::find_if(links, [&](const FoundLink& link) {
            return link.downstream != links.front().downstream;
        });
        std::ranges::sort(links.begin(), end, {}, place);
        links = {end, links.end()};
    }
}

// Requires: the links are sorted.
void cutGroups(SideIndex& side, Number file, std::span<const FoundLink> links) {
    side.firstGroup.push_back(static_cast<Number>(side.groups.size()));
    Number lastRank = none;
    for (const FoundLink& link : links) {
        if (link.downstream != lastRank) {
            lastRank = link.downstream;
            side.groups.push_back({.file = file,
                                   .downstream = side.nodeAt[link.downstream],
                                   .first = static_cast<Number>(side.links.size())});
        } else if ((*side.links.back())->getID() == (*link.dependency)->getID()) {
            continue;
        }
        side.links.push_back(link.dependency);
    }
}

void makeGroups(SideIndex& side, FoundLinks found) {
    const auto linksOf = [&](Number file) {
        return std::span(found.links)
            .subspan(found.first[file], found.first[file + 1] - found.first[file]);
    };
    std::size_t groups = 0;
    for (Number file = 0; file < side.fileCount; ++file) {
        const auto links = linksOf(file);
        for (FoundLink& link : links) {
            link.downstream = side.rankOf[link.downstream];
        }
        sortLinks(links);
        for (std::size_t i = 0; i < links.size(); ++i) {
            groups += i == 0 || links[i].downstream != links[i - 1].downstream ? 1 : 0;
        }
    }
    side.links.reserve(found.links.size());
    side.groups.reserve(groups);
    side.firstGroup.reserve(found.first.size());
    for (Number file = 0; file < side.fileCount; ++file) {
        cutGroups(side, file, linksOf(file));
    }
    side.firstGroup.push_back(static_cast<Number>(side.groups.size()));
}

}  // namespace

PairIndex::PairIndex(const std::shared_ptr<const graph::Graph>& left,
                     const std::shared_ptr<const graph::Graph>& right) {
    sides[0].graph = left;
    sides[1].graph = right;
    std::array found{findLinks(sides[0]), findLinks(sides[1])};
    rankNodes(*this);
    for (std::size_t side = 0; side < sides.size(); ++side) {
        makeGroups(sides[side], std::move(found[side]));
    }
}

void PairIndex::makeItem(Side side, Number item, std::optional<Item>& place) const {
    const SideIndex& graph = (*this)[side];
    if (graph.isFile(item)) {
        place.emplace(graph.nodes[item]);
        return;
    }
    const GroupRecord& record = graph.group(item);
    auto& parallel =
        std::get<ParallelDependencies>(place.emplace(std::in_place_type<ParallelDependencies>));
    parallel.upstream = graph.nodes[record.file];
    parallel.downstream = graph.nodes[record.downstream];
    for (const Link link : graph.linksOf(record)) {
        parallel.dependencies.insert(parallel.dependencies.end(), *link);
    }
    // Not the nodes' own IDs: equal ones of both sides are one text here, read once for both.
    const std::u16string_view upstream = ids[graph.rankOf[record.file]];
    const std::u16string_view downstream = ids[graph.rankOf[record.downstream]];
    parallel.id.reserve(upstream.size() + downstream.size());
    parallel.id.append(upstream).append(downstream);
}

}  // namespace dependency::comparisons
