#include <dependency/comparisons/compare_graphs.h>

#include <algorithm>

#include <fl/i18n/ustring.h>

#include "core/pair_index.h"
#include "core/sibling_positions.h"
#include "matching/edit_maker.h"
#include "matching/pairing.h"
#include "subcomparators/detail_comparisons.h"

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

using Tree = GraphComparison::Tree;
using Vertex = GraphComparison::Vertex;

std::string describe(const ItemID& item) {
    std::string text = '"' + fl::i18n::ustring_to_utf8(item.node) + '"';
    if (item.downstream) {
        text += " -> \"" + fl::i18n::ustring_to_utf8(*item.downstream) + '"';
    }
    return text;
}

std::string describeLoss(Side side, const ItemID& lost, const std::optional<ItemID>& kept) {
    std::string text = "the matching left out ";
    text += describe(lost);
    text += side == Side::left ? " of the left graph" : " of the right graph";
    if (kept) {
        text += ": " + describe(*kept) + " has the same key";
    }
    return text;
}

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
        const Number item = pairing.items[side];
        if (item != none && joined(itemID(index[side], item)) == joined(lostID)) {
            kept = itemID(index[side], item);
        }
    }
    throw UnmatchedItemError(side, lostID, std::move(kept));
}

// Throws: `UnmatchedItemError` if an item is in no pairing.
void checkComplete(const PairIndex& index, const std::vector<Pairing>& pairings) {
    for (const Side side : ::comparisons::sides) {
        std::vector<bool> paired(index[side].itemCount());
        for (const Pairing& pairing : pairings) {
            if (pairing.items[side] != none) {
                paired[pairing.items[side]] = true;
            }
        }
        const auto lost = std::ranges::find(paired, false);
        if (lost != paired.end()) {
            reportUnmatched(index, pairings, side, static_cast<Number>(lost - paired.begin()));
        }
    }
}

// Fills `tree` with an entry for the graphs, then one per pairing, linked and placed as each side
// has it, each with its detail.
//
// Requires: a file's pairing comes before those of its groups.
// Returns:  the vertex of the graphs.
Vertex buildTree(Tree& tree, PairIndex& index, const std::vector<Pairing>& pairings) {
    const BySide<std::vector<Number>> positions{siblingPositions(index[Side::left]),
                                                siblingPositions(index[Side::right])};
    BySide<std::vector<Vertex>> files;
    for (const Side side : ::comparisons::sides) {
        files[side].resize(index[side].fileCount);
    }
    EditMaker maker(index);
    DetailComparisons compareDetail;
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
            const Number item = pairing.items[side];
            if (item == none) {
                continue;
            }
            const bool isFile = index[side].isFile(item);
            const Vertex parent = isFile ? root : files[side][index[side].group(item).file];
            if (isFile) {
                files[side][item] = vertex;
            }
            entry.positions[side] = positions[side][item];
            // Looking for the link of the other side would make one first and drop it.
            if (!link || boost::source(*link, tree) != parent) {
                link = boost::add_edge(parent, vertex, tree).first;
            }
            tree[*link].sides.push_back(side);
        }
    }
    return root;
}

}  // namespace

UnmatchedItemError::UnmatchedItemError(Side side, ItemID lost, std::optional<ItemID> kept)
    : std::logic_error(describeLoss(side, lost, kept)),
      side_(side),
      lost_(std::move(lost)),
      kept_(std::move(kept)) {}

UnmatchedItemError::~UnmatchedItemError() = default;

std::shared_ptr<GraphComparison> compareGraphs(const std::shared_ptr<const graph::Graph>& left,
                                               const std::shared_ptr<const graph::Graph>& right) {
    PairIndex index(left, right);
    const auto pairings = pairItems(index);
    checkComplete(index, pairings);
    return std::make_shared<GraphComparison>(
        [&](Tree& tree) { return buildTree(tree, index, pairings); });
}

}  // namespace dependency::comparisons
