#include "matching/item_equality.h"

#include <algorithm>

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

// The same keys in another order are a difference.
template <class Owner>
bool propertiesEqual(const Owner& a, const Owner& b) {
    const auto keys = a.getPropertyKeys();
    return keys == b.getPropertyKeys() && std::ranges::all_of(keys, [&](const auto& key) {
               return a.getProperty(key) == b.getProperty(key);
           });
}

}  // namespace

ItemEquality::ItemEquality(const PairIndex& index) : index_(index), equalNodes_(index.ids.size()) {
    const SideIndex& left = index[Side::left];
    const SideIndex& right = index[Side::right];
    for (Number node = 0; node < left.nodes.size(); ++node) {
        const Number rank = left.rankOf[node];
        const Number match = right.nodeAt[rank];
        equalNodes_[rank] = match != none && *left.nodes[node] == *right.nodes[match] ? 1 : 0;
    }
}

bool ItemEquality::ofGraphs() const {
    return propertiesEqual(*index_[Side::left].graph, *index_[Side::right].graph);
}

bool ItemEquality::operator()(const Pairing& pairing) const {
    const SideIndex& left = index_[Side::left];
    const SideIndex& right = index_[Side::right];
    const auto [a, b] = pairing.items;
    if (left.isFile(a) != right.isFile(b)) {
        return true;
    }
    return left.isFile(a) ? propertiesEqual(*left.nodes[a], *right.nodes[b])
                          : groupsEqual(left.group(a), right.group(b));
}

bool ItemEquality::groupsEqual(const GroupRecord& a, const GroupRecord& b) const {
    return endsEqual(a.file, b.file) && endsEqual(a.downstream, b.downstream) &&
           std::ranges::equal(index_[Side::left].linksOf(a), index_[Side::right].linksOf(b),
                              [](Link x, Link y) { return **x == **y; });
}

// Nodes with different IDs are different.
bool ItemEquality::endsEqual(Number a, Number b) const {
    const Number rank = index_[Side::left].rankOf[a];
    return rank == index_[Side::right].rankOf[b] && equalNodes_[rank] != 0;
}

}  // namespace dependency::comparisons
