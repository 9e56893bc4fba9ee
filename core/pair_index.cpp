#include "core/pair_index.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <unordered_map>

#include "core/file_nodes.h"

namespace dependency::comparisons {

namespace {

using NumberByNode = std::unordered_map<const graph::Node*, Number>;

Number numberOf(std::shared_ptr<graph::Node> node, SideIndex& side, NumberByNode& numbers) {
    const auto [found, added] =
        numbers.try_emplace(node.get(), static_cast<Number>(side.nodes.size()));
    if (added) {
        side.nodes.push_back(std::move(node));
    }
    return found->second;
}

// Returns: where the links of each file begin, and one past the last. Links still name their
// downstream node by its number.
std::vector<std::size_t> collectLinks(SideIndex& side) {
    NumberByNode numbers;
    side.nodes = fileNodes(*side.graph);
    side.fileCount = static_cast<Number>(side.nodes.size());
    numbers.reserve(side.nodes.size());
    for (Number file = 0; file < side.fileCount; ++file) {
        numbers.emplace(side.nodes[file].get(), file);
    }
    std::vector<std::size_t> firstLink;
    firstLink.reserve(side.fileCount + std::size_t{1});
    for (Number file = 0; file < side.fileCount; ++file) {
        firstLink.push_back(side.links.size());
        Number order = 0;
        for (const auto& dependency : side.graph->getDownstreamDependencies(side.nodes[file])) {
            side.links.push_back(
                {.downstream = numberOf(dependency->getDownstreamNode(), side, numbers),
                 .order = order++,
                 .dependency = &dependency});
        }
    }
    firstLink.push_back(side.links.size());
    return firstLink;
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

void cutGroups(SideIndex& side, const std::vector<std::size_t>& firstLink) {
    for (Link& link : side.links) {
        link.downstream = side.rankOf[link.downstream];
    }
    side.firstGroup.reserve(firstLink.size());
    for (Number file = 0; file < side.fileCount; ++file) {
        side.firstGroup.push_back(static_cast<Number>(side.groups.size()));
        std::span<Link> links(side.links.data() + firstLink[file],
                              side.links.data() + firstLink[file + 1]);
        // Of two dependencies with one ID the first counts, hence the order.
        std::ranges::sort(links, {}, [](const Link& link) {
            return std::tie(link.downstream, (*link.dependency)->getID(), link.order);
        });
        while (!links.empty()) {
            const Number downstream = links.front().downstream;
            const auto end = std::ranges::find_if(
                links, [&](const Link& link) { return link.downstream != downstream; });
            const auto size = static_cast<std::size_t>(end - links.begin());
            side.groups.push_back(
                {.file = file, .downstream = side.nodeAt[downstream], .links = links.first(size)});
            links = links.subspan(size);
        }
    }
    side.firstGroup.push_back(static_cast<Number>(side.groups.size()));
}

}  // namespace

PairIndex::PairIndex(const std::shared_ptr<const graph::Graph>& left,
                     const std::shared_ptr<const graph::Graph>& right) {
    sides[0].graph = left;
    sides[1].graph = right;
    const std::array firstLinks{collectLinks(sides[0]), collectLinks(sides[1])};
    rankNodes(*this);
    for (std::size_t side = 0; side < sides.size(); ++side) {
        cutGroups(sides[side], firstLinks[side]);
    }
}

Item SideIndex::makeItem(Number item) const {
    if (isFile(item)) {
        return nodes[item];
    }
    const GroupRecord& record = group(item);
    Item made(std::in_place_type<ParallelDependencies>);
    auto& parallel = std::get<ParallelDependencies>(made);
    parallel.upstream = nodes[record.file];
    parallel.downstream = nodes[record.downstream];
    for (const Link& link : record.links) {
        parallel.dependencies.insert(parallel.dependencies.end(), *link.dependency);
    }
    const std::u16string& upstream = parallel.upstream->getID();
    const std::u16string& downstream = parallel.downstream->getID();
    parallel.id.reserve(upstream.size() + downstream.size());
    parallel.id.append(upstream).append(downstream);
    return made;
}

}  // namespace dependency::comparisons
