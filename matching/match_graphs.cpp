#include <dependency/comparisons/match_graphs.h>

#include "matching/edit_maker.h"
#include "matching/pairing.h"

namespace dependency::comparisons {

std::vector<ItemEdit> matchGraphs(const std::shared_ptr<const graph::Graph>& left,
                                  const std::shared_ptr<const graph::Graph>& right) {
    PairIndex index(left, right);
    const auto pairings = pairItems(index);
    EditMaker maker(index);
    std::vector<ItemEdit> edits;
    edits.reserve(pairings.size() + 1);
    edits.push_back(maker.ofGraphs());
    for (const Pairing& pairing : pairings) {
        maker.fill(edits.emplace_back(), pairing);
    }
    return edits;
}

}  // namespace dependency::comparisons
