#include "matching/pairing.h"

#include <algorithm>

#include "matching/key_collisions.h"

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

void pairFile(const PairIndex& index, std::array<Number, 2> files, std::vector<Pairing>& pairings) {
    pairings.push_back({files});
    std::array<Number, 2> next{};
    std::array<Number, 2> end{};
    for (std::size_t side = 0; side < files.size(); ++side) {
        if (files[side] != none) {
            next[side] = index.sides[side].firstGroup[files[side]];
            end[side] = index.sides[side].firstGroup[files[side] + 1];
        }
    }
    // `none` is greater than every rank.
    const auto downstreamRank = [&](std::size_t side) {
        const SideIndex& graph = index.sides[side];
        return next[side] == end[side] ? none : graph.rankOf[graph.groups[next[side]].downstream];
    };
    while (next != end) {
        const std::array ranks{downstreamRank(0), downstreamRank(1)};
        const Number rank = std::min(ranks[0], ranks[1]);
        Pairing& pairing = pairings.emplace_back();
        for (std::size_t side = 0; side < files.size(); ++side) {
            if (ranks[side] == rank) {
                pairing.items[side] = index.sides[side].itemOfGroup(next[side]++);
            }
        }
    }
}

}  // namespace

std::vector<Pairing> pairItems(const PairIndex& index) {
    return keysMayCoincide(index) ? pairByKey(index) : pairByRank(index);
}

std::vector<Pairing> pairByRank(const PairIndex& index) {
    const SideIndex& left = index[Side::left];
    const SideIndex& right = index[Side::right];
    std::vector<Pairing> pairings;
    // Most items have a pair; growing beyond would double what is taken.
    const auto [fewer, more] = std::minmax({left.itemCount(), right.itemCount()});
    pairings.reserve(std::size_t{more} + fewer / 8);
    for (Number file = 0; file < left.fileCount; ++file) {
        pairFile(index, {file, right.fileAt(left.rankOf[file])}, pairings);
    }
    for (Number file = 0; file < right.fileCount; ++file) {
        if (left.fileAt(right.rankOf[file]) == none) {
            pairFile(index, {none, file}, pairings);
        }
    }
    return pairings;
}

}  // namespace dependency::comparisons
