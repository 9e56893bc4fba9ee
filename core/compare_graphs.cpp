#include <dependency/comparisons/compare_graphs.h>

#include <fl/i18n/ustring.h>

#include "core/pair_index.h"
#include "core/tree_build.h"
#include "matching/pairing.h"
#include "subcomparators/detail_comparisons.h"

namespace dependency::comparisons {

namespace {

std::string describe(const ItemID& item) {
    std::string text = '"' + fl::i18n::ustring_to_utf8(item.node) + '"';
    if (item.downstream) {
        text += " -> \"" + fl::i18n::ustring_to_utf8(*item.downstream) + '"';
    }
    return text;
}

std::string describeLoss(::comparisons::Side side, const ItemID& lost,
                         const std::optional<ItemID>& kept) {
    std::string text = "the matching left out ";
    text += describe(lost);
    text += side == ::comparisons::Side::left ? " of the left graph" : " of the right graph";
    if (kept) {
        text += ": " + describe(*kept) + " has the same key";
    }
    return text;
}

}  // namespace

UnmatchedItemError::UnmatchedItemError(::comparisons::Side side, ItemID lost,
                                       std::optional<ItemID> kept)
    : std::logic_error(describeLoss(side, lost, kept)),
      side_(side),
      lost_(std::move(lost)),
      kept_(std::move(kept)) {}

UnmatchedItemError::~UnmatchedItemError() = default;

std::shared_ptr<GraphComparison> compareGraphs(const std::shared_ptr<const graph::Graph>& left,
                                               const std::shared_ptr<const graph::Graph>& right) {
    const PairIndex index(left, right);
    const auto pairings = pairItems(index);
    DetailComparisons compareDetail;
    return std::make_shared<GraphComparison>([&](GraphComparison::Tree& tree) {
        return buildTree(tree, index, pairings, compareDetail);
    });
}

}  // namespace dependency::comparisons
