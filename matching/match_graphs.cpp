#include <dependency/comparisons/match_graphs.h>

#include "matching/pairing.h"

namespace dependency::comparisons {

std::vector<ItemEdit> matchGraphs(const std::shared_ptr<const graph::Graph>& left,
                                  const std::shared_ptr<const graph::Graph>& right) {
    const PairIndex index(left, right);
    const auto pairings = pairItems(index);
    std::vector<ItemEdit> edits;
    edits.reserve(pairings.size() + 1);
    edits.push_back(makeGraphEdit(index));
    for (const Pairing& pairing : pairings) {
        edits.push_back(makeEdit(index, pairing));
    }
    return edits;
}

}  // namespace dependency::comparisons
