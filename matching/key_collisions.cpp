// All IDs that begin with u1 follow u1 in ascending order without a gap, so one walk over the
// sorted IDs with a stack of open prefixes meets every pair of an ID and a proper prefix of it.
#include "matching/key_collisions.h"

#include <algorithm>
#include <utility>

namespace dependency::comparisons {

namespace {

// Returns: the ranks of the IDs that start with `prefix`: the first, and one past the last.
std::pair<Number, Number> ranksStartingWith(std::u16string_view prefix,
                                            const std::vector<std::u16string_view>& ids) {
    const auto head = [&](std::u16string_view id) { return id.substr(0, prefix.size()); };
    const auto run = std::ranges::equal_range(ids, prefix, {}, head);
    return {static_cast<Number>(run.begin() - ids.begin()),
            static_cast<Number>(run.end() - ids.begin())};
}

bool dependsOnAny(const SideIndex& side, Number upstreamRank, std::pair<Number, Number> ranks) {
    const Number file = side.fileAt(upstreamRank);
    if (file == none) {
        return false;
    }
    const auto first = side.groups.begin() + side.firstGroup[file];
    const auto last = side.groups.begin() + side.firstGroup[file + 1];
    const auto downstreamRank = [&](const GroupRecord& group) {
        return side.rankOf[group.downstream];
    };
    const auto found = std::ranges::lower_bound(first, last, ranks.first, {}, downstreamRank);
    return found != last && downstreamRank(*found) < ranks.second;
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
            const auto ranks = ranksStartingWith(ids[rank].substr(ids[prefix].size()), ids);
            for (const SideIndex& side : index.sides) {
                if (ranks.first != ranks.second && dependsOnAny(side, prefix, ranks)) {
                    return true;
                }
            }
        }
        prefixes.push_back(rank);
    }
    return false;
}

}  // namespace dependency::comparisons
