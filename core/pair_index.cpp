#include "core/pair_index.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <tuple>
#include <utility>

#include <tsl/robin_map.h>
#include <tsl/robin_set.h>

#include "core/file_nodes.h"

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

struct HashOfAddress {
    std::size_t operator()(const graph::Node* node) const noexcept {
        return mixed(reinterpret_cast<std::uintptr_t>(node));
    }
};

using NodeNumbers = tsl::robin_map<const graph::Node*, Number, HashOfAddress>;

Number numberOf(std::shared_ptr<graph::Node> node, SideIndex& side, NodeNumbers& numbers) {
    const auto fresh = static_cast<Number>(side.nodes.size());
    const auto [found, added] = numbers.try_emplace(node.get(), fresh);
    if (added) {
        side.nodes.push_back(std::move(node));
    }
    return found->second;
}

// A dependency on its way into a group.
struct FoundLink {
    Number downstream = 0;  // node number, later rank
    Number place = 0;       // among all that were found
};

struct FoundLinks {
    std::vector<std::shared_ptr<graph::Dependency>> dependencies;
    std::vector<FoundLink> links;  // by file
    std::vector<Number> first;     // by file, and one past the last
};

FoundLinks findLinks(SideIndex& side) {
    NodeNumbers numbers;
    side.nodes = fileNodes(*side.graph);
    side.fileCount = static_cast<Number>(side.nodes.size());
    numbers.reserve(side.nodes.size());
    for (Number file = 0; file < side.fileCount; ++file) {
        numbers.try_emplace(side.nodes[file].get(), file);
    }
    FoundLinks found;
    found.first.reserve(side.fileCount + std::size_t{1});
    for (Number file = 0; file < side.fileCount; ++file) {
        found.first.push_back(static_cast<Number>(found.links.size()));
        for (const auto& dependency : side.graph->getDownstreamDependencies(side.nodes[file])) {
            found.links.push_back(
                {.downstream = numberOf(dependency->getDownstreamNode(), side, numbers),
                 .place = static_cast<Number>(found.dependencies.size())});
            found.dependencies.push_back(dependency);
        }
    }
    found.first.push_back(static_cast<Number>(found.links.size()));
    return found;
}

// Numbers of IDs by the texts, which live elsewhere.
struct HashOfID {
    const std::vector<HashedText>* hashes;
    std::size_t operator()(Number number) const { return mixed((*hashes)[number].hash); }
};
struct SameID {
    const std::vector<std::u16string_view>* ids;
    bool operator()(Number a, Number b) const { return (*ids)[a] == (*ids)[b]; }
};
using IDNumbers =
    tsl::robin_set<Number, HashOfID, SameID, std::allocator<Number>, true /* keep the hashes */>;

// Gives the nodes of both sides numbers that agree, in the order in which IDs are met.
void numberIDs(PairIndex& index) {
    const TextHash hashOf;
    IDNumbers numbers(0, {&index.hashes}, {&index.ids});
    numbers.reserve(index[Side::left].nodes.size() + index[Side::right].nodes.size());
    for (SideIndex& side : index.sides) {
        side.rankOf.reserve(side.nodes.size());
        for (const auto& node : side.nodes) {
            const auto fresh = static_cast<Number>(index.ids.size());
            index.ids.emplace_back(node->getID());
            index.hashes.push_back(hashOf(node->getID()));
            const auto [found, added] = numbers.insert(fresh);
            if (!added) {
                index.ids.pop_back();
                index.hashes.pop_back();
            }
            side.rankOf.push_back(*found);
        }
    }
}

template <class T>
std::vector<T> inOrder(const std::vector<T>& values, const std::vector<Number>& order) {
    std::vector<T> ordered;
    ordered.reserve(order.size());
    for (const Number number : order) {
        ordered.push_back(values[number]);
    }
    return ordered;
}

void rankNodes(PairIndex& index) {
    numberIDs(index);
    std::vector<Number> byID(index.ids.size());
    std::iota(byID.begin(), byID.end(), Number{0});
    std::ranges::sort(byID, {}, [&](Number number) { return index.ids[number]; });
    std::vector<Number> rankOfNumber(byID.size());
    for (Number rank = 0; rank < byID.size(); ++rank) {
        rankOfNumber[byID[rank]] = rank;
    }
    index.ids = inOrder(index.ids, byID);
    index.hashes = inOrder(index.hashes, byID);
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
void sortLinks(std::span<FoundLink> links, const FoundLinks& found) {
    std::ranges::sort(links, {}, &FoundLink::downstream);
    const auto byID = [&](const FoundLink& link) {
        return std::tie(found.dependencies[link.place]->getID(), link.place);
    };
    while (!links.empty()) {
        const auto end = std::ranges::find_if(links, [&](const FoundLink& link) {
            return link.downstream != links.front().downstream;
        });
        std::ranges::sort(links.begin(), end, {}, byID);
        links = {end, links.end()};
    }
}

// Requires: the links are sorted.
void cutGroups(SideIndex& side, Number file, std::span<const FoundLink> links, FoundLinks& found) {
    side.firstGroup.push_back(static_cast<Number>(side.groups.size()));
    Number lastRank = none;
    for (const FoundLink& link : links) {
        auto& dependency = found.dependencies[link.place];
        if (link.downstream != lastRank) {
            lastRank = link.downstream;
            side.groups.push_back({.file = file,
                                   .downstream = side.nodeAt[link.downstream],
                                   .first = static_cast<Number>(side.links.size())});
        } else if (side.links.back()->getID() == dependency->getID()) {
            continue;
        }
        side.links.push_back(std::move(dependency));
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
        sortLinks(links, found);
        for (std::size_t i = 0; i < links.size(); ++i) {
            groups += i == 0 || links[i].downstream != links[i - 1].downstream ? 1 : 0;
        }
    }
    side.links.reserve(found.links.size());
    side.groups.reserve(groups + 1);
    side.firstGroup.reserve(found.first.size());
    for (Number file = 0; file < side.fileCount; ++file) {
        cutGroups(side, file, linksOf(file), found);
    }
    side.firstGroup.push_back(static_cast<Number>(side.groups.size()));
    side.groups.push_back({.first = static_cast<Number>(side.links.size())});
}

}  // namespace

PairIndex::PairIndex(const std::shared_ptr<const graph::Graph>& left,
                     const std::shared_ptr<const graph::Graph>& right) {
    BySide<FoundLinks> found;
    std::size_t total = 0;
    for (const Side side : ::comparisons::sides) {
        sides[side].graph = side == Side::left ? left : right;
        found[side] = findLinks(sides[side]);
        total += sides[side].nodes.size() + found[side].links.size();
    }
    if (total >= none) {
        throw std::length_error("graphs with more nodes and dependencies than can be numbered");
    }
    rankNodes(*this);
    for (const Side side : ::comparisons::sides) {
        makeGroups(sides[side], std::move(found[side]));
    }
}

void PairIndex::takeItem(Side side, Number item, std::optional<Item>& place) {
    SideIndex& graph = sides[side];
    if (graph.isFile(item)) {
        place.emplace(graph.nodes[item]);
        return;
    }
    const GroupRecord& record = graph.group(item);
    auto& parallel =
        std::get<ParallelDependencies>(place.emplace(std::in_place_type<ParallelDependencies>));
    parallel.upstream = graph.nodes[record.file];
    parallel.downstream = graph.nodes[record.downstream];
    for (auto& link : graph.linksOf(item)) {
        parallel.dependencies.insert(parallel.dependencies.end(), std::move(link));
    }
    // Not the nodes' own IDs: equal ones of both sides are one text here, read once for both.
    const std::u16string_view upstream = ids[graph.rankOf[record.file]];
    const std::u16string_view downstream = ids[graph.rankOf[record.downstream]];
    parallel.id.reserve(upstream.size() + downstream.size());
    parallel.id.append(upstream).append(downstream);
}

}  // namespace dependency::comparisons
