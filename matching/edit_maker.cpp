#include "matching/edit_maker.h"

#include <algorithm>

#include "core/item_kind.h"

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

// The same keys in another order are a difference.
template <class Owner>
bool propertiesEqual(const std::shared_ptr<Owner>& a, const std::shared_ptr<Owner>& b) {
    const auto keys = a->getPropertyKeys();
    return keys == b->getPropertyKeys() && std::ranges::all_of(keys, [&](const auto& key) {
               return a->getProperty(key) == b->getProperty(key);
           });
}

}  // namespace

ItemEdit EditMaker::ofGraphs() const {
    const auto& left = index_[Side::left].graph;
    const auto& right = index_[Side::right].graph;
    return {left, right, !propertiesEqual(left, right)};
}

void EditMaker::fill(ItemEdit& edit, const Pairing& pairing) {
    for (const Side side : ::comparisons::sides) {
        if (pairing.items[side] != none) {
            index_.takeItem(side, pairing.items[side], edit[side]);
        }
    }
    edit.setChanged(hasBothSides(edit) && !equal(edit, pairing));
}

bool EditMaker::equal(const ItemEdit& edit, const Pairing& pairing) {
    using Node = std::shared_ptr<graph::Node>;
    const Item& left = *edit[Side::left];
    const Item& right = *edit[Side::right];
    if (left.index() != right.index()) {
        return true;
    }
    if (kindOf(left) == ItemKind::node) {
        return propertiesEqual(std::get<Node>(left), std::get<Node>(right));
    }
    const GroupRecord& a = index_[Side::left].group(pairing.items[Side::left]);
    const GroupRecord& b = index_[Side::right].group(pairing.items[Side::right]);
    return endsEqual(a.file, b.file) && endsEqual(a.downstream, b.downstream) &&
           std::ranges::equal(std::get<ParallelDependencies>(left).dependencies,
                              std::get<ParallelDependencies>(right).dependencies,
                              [](const auto& x, const auto& y) { return *x == *y; });
}

// Nodes with one ID end many groups, and are compared once for all of them.
bool EditMaker::endsEqual(Number left, Number right) {
    const SideIndex& leftSide = index_[Side::left];
    const SideIndex& rightSide = index_[Side::right];
    const auto compare = [&] { return *leftSide.nodes[left] == *rightSide.nodes[right]; };
    const Number rank = leftSide.rankOf[left];
    if (rank != rightSide.rankOf[right]) {
        return compare();
    }
    Compared& known = comparedNodes_[rank];
    if (known == Compared::notYet) {
        known = compare() ? Compared::equal : Compared::different;
    }
    return known == Compared::equal;
}

}  // namespace dependency::comparisons
