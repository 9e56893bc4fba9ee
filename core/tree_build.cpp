#include "core/tree_build.h"

#include <algorithm>
#include <optional>

#include "core/sibling_positions.h"
#include "matching/edit_maker.h"

namespace dependency::comparisons {

using ::comparisons::indexOf;
using ::comparisons::Side;

namespace {

using Tree = GraphComparison::Tree;
using Vertex = GraphComparison::Vertex;
template <class T>
using BySide = std::array<T, 2>;

ItemID itemID(const SideIndex& side, Number item) {
    if (side.isFile(item)) {
        return {.node = side.nodes[item]->getID(), .downstream = std::nullopt};
    }
    const GroupRecord& group = side.group(item);
    return {.node = side.nodes[group.file]->getID(),
            .downstream = side.nodes[group.downstream]->getID()};
}

std::u16string joined(const ItemID& id) {
    return id.downstream ? id.node + *id.downstream : id.node;
}

[[noreturn]] void reportUnmatched(const PairIndex& index, const std::vector<Pairing>& pairings,
                                  Side side, Number lost) {
    const ItemID lostID = itemID(index[side], lost);
    std::optional<ItemID> kept;
    for (const Pairing& pairing : pairings) {
        const Number item = pairing.items[indexOf(side)];
        if (item != none && joined(itemID(index[side], item)) == joined(lostID)) {
            kept = itemID(index[side], item);
        }
    }
    throw UnmatchedItemError(side, lostID, std::move(kept));
}

void checkComplete(const PairIndex& index, const std::vector<Pairing>& pairings) {
    for (const Side side : ::comparisons::sides) {
        std::vector<bool> paired(index[side].itemCount());
        for (const Pairing& pairing : pairings) {
            if (pairing.items[indexOf(side)] != none) {
                paired[pairing.items[indexOf(side)]] = true;
            }
        }
        const auto lost = std::ranges::find(paired, false);
        if (lost != paired.end()) {
            reportUnmatched(index, pairings, side, static_cast<Number>(lost - paired.begin()));
        }
    }
}

}  // namespace

Vertex buildTree(Tree& tree, const PairIndex& index, const std::vector<Pairing>& pairings,
                 DetailComparisons& compareDetail) {
    checkComplete(index, pairings);
    const BySide<std::vector<Number>> positions{siblingPositions(index[Side::left]),
                                                siblingPositions(index[Side::right])};
    BySide<std::vector<Vertex>> files;
    for (const Side side : ::comparisons::sides) {
        files[indexOf(side)].resize(index[side].fileCount);
    }
    const EditMaker maker(index);
    const Vertex root = ::comparisons::addEntry<ItemEdit>(tree);
    tree[root].edit = maker.ofGraphs();
    tree[root].detail = compareDetail(tree[root].edit);

    for (const Pairing& pairing : pairings) {
        const Vertex vertex = ::comparisons::addEntry<ItemEdit>(tree);
        auto& entry = tree[vertex];
        maker.fill(entry.edit, pairing);
        entry.detail = compareDetail(entry.edit);
        std::optional<Tree::edge_descriptor> link;
        for (const Side side : ::comparisons::sides) {
            const Number item = pairing.items[indexOf(side)];
            if (item == none) {
                continue;
            }
            const bool isFile = index[side].isFile(item);
            const Vertex parent =
                isFile ? root : files[indexOf(side)][index[side].group(item).file];
            if (isFile) {
                files[indexOf(side)][item] = vertex;
            }
            entry.positions[indexOf(side)] = positions[indexOf(side)][item];
            // Looking for the link of the other side would make one first and drop it.
            if (!link || boost::source(*link, tree) != parent) {
                link = boost::add_edge(parent, vertex, tree).first;
            }
            tree[*link].sides.push_back(side);
        }
    }
    return root;
}

}  // namespace dependency::comparisons
