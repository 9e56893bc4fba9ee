#include <string>
#include <unordered_map>

#include "matching/pairing.h"

namespace dependency::comparisons {

namespace {

std::u16string keyOf(const SideIndex& side, Number item) {
    if (side.isFile(item)) {
        return side.nodes[item]->getID();
    }
    const GroupRecord& group = side.group(item);
    return side.nodes[group.file]->getID() + side.nodes[group.downstream]->getID();
}

}  // namespace

std::vector<Pairing> pairByKey(const PairIndex& index) {
    std::unordered_map<std::u16string, Pairing> table;
    table.reserve(std::size_t{index.sides[0].itemCount()} + index.sides[1].itemCount());
    for (std::size_t side = 0; side < index.sides.size(); ++side) {
        const SideIndex& graph = index.sides[side];
        for (Number item = graph.fileCount; item < graph.itemCount(); ++item) {
            table[keyOf(graph, item)].items[side] = item;
        }
        for (Number item = 0; item < graph.fileCount; ++item) {
            table[keyOf(graph, item)].items[side] = item;
        }
    }
    std::vector<Pairing> pairings;
    pairings.reserve(table.size());
    const auto holdsFile = [&](const Pairing& pairing) {
        return index.sides[0].isFile(pairing.items[0]) || index.sides[1].isFile(pairing.items[1]);
    };
    for (const bool files : {true, false}) {
        for (const auto& [key, pairing] : table) {
            if (holdsFile(pairing) == files) {
                pairings.push_back(pairing);
            }
        }
    }
    return pairings;
}

}  // namespace dependency::comparisons
