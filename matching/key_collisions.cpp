// All IDs that begin with u1 follow u1 in ascending order without a gap, so one walk over the
// sorted IDs with a stack of open prefixes meets every pair of an ID and a proper prefix of it.
#include "matching/key_collisions.h"

#include <algorithm>
#include <span>
#include <utility>

namespace dependency::comparisons {

namespace {

// Returns: the ranks of the IDs that start with `prefix`: the first, and one past the last.
std::pair<Number, Number> ranksStartingWith(std::u16string_view prefix,
                                            const std::vector<std::u16string_view>& ids) {
    const auto head = [&](std::u16string_view id) { return id.substr(0, prefix.size()); };
    const auto first = std::ranges::lower_bound(ids, prefix, {}, head);
    const auto last = std::ranges::upper_bound(first, ids.end(), prefix, {}, head);
    return {static_cast<Number>(first - ids.begin()), static_cast<Number>(last - ids.begin())};
}

using Groups = std::span<const GroupRecord>;

Number downstreamRank(const SideIndex& side, const GroupRecord& group) {
    return side.rankOf[group.downstream];
}

// Returns: the groups that lead from one node to nodes with the ranks [first, last).
Groups groupsTo(const SideIndex& side, Number upstream, std::pair<Number, Number> ranks) {
    const Number file = side.fileAt(upstream);
    if (file == none) {
        return {};
    }
    const Groups groups(side.groups.data() + side.firstGroup[file],
                        side.groups.data() + side.firstGroup[file + 1]);
    const auto rank = [&](const GroupRecord& group) { return downstreamRank(side, group); };
    return {std::ranges::lower_bound(groups, ranks.first, {}, rank),
            std::ranges::lower_bound(groups, ranks.second, {}, rank)};
}

// Returns: whether a side has an item with the key made of the node and `rest`.
bool hasItem(const PairIndex& index, Number upstream, std::u16string_view rest) {
    const auto found = std::ranges::lower_bound(index.ids, rest);
    const bool isID = found != index.ids.end() && *found == rest;
    const auto rank = static_cast<Number>(found - index.ids.begin());
    return std::ranges::any_of(index.sides, [&](const SideIndex& side) {
        return rest.empty() ? side.fileAt(upstream) != none
                            : isID && !groupsTo(side, upstream, {rank, rank + 1}).empty();
    });
}

// Returns: whether a group of `prefix` has the key of an item of `longer`, whose ID begins with it.
bool keysCoincide(const PairIndex& index, Number prefix, Number longer) {
    const auto& ids = index.ids;
    const auto difference = ids[longer].substr(ids[prefix].size());
    const auto ranks = ranksStartingWith(difference, ids);
    return std::ranges::any_of(index.sides, [&](const SideIndex& side) {
        return std::ranges::any_of(groupsTo(side, prefix, ranks), [&](const GroupRecord& group) {
            const auto downstream = ids[downstreamRank(side, group)];
            return hasItem(index, longer, downstream.substr(difference.size()));
        });
    });
}

}  // namespace

bool keysMayCoincide(const PairIndex& index) {
    const auto& ids = index.ids;
    if (!ids.empty() && ids.front().empty()) {
        return true;
    }
    std::size_t searchesLeft = 4 * ids.size();
    std::vector<Number> prefixes;
    for (Number rank = 0; rank < ids.size(); ++rank) {
        while (!prefixes.empty() && !ids[rank].starts_with(ids[prefixes.back()])) {
            prefixes.pop_back();
        }
        for (const Number prefix : prefixes) {
            if (searchesLeft-- == 0) {
                return true;
            }
            if (keysCoincide(index, prefix, rank)) {
                return true;
            }
        }
        prefixes.push_back(rank);
    }
    return false;
}

}  // namespace dependency::comparisons
