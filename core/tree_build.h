#pragma once
// From paired items to a tree: one entry per pairing, linked and placed as each side has it.
#include <vector>

#include <dependency/comparisons/compare_graphs.h>

#include "core/pair_index.h"
#include "matching/pairing.h"
#include "subcomparators/detail_comparisons.h"

namespace dependency::comparisons {

/// Fills `tree` with an entry for the graphs, then one per pairing in their order, each with what
/// `compareDetail` makes of its edit.
///
/// Returns: the vertex of the graphs.
/// Throws:  `UnmatchedItemError` where an item is in no pairing, before anything is built, and what
///          `compareDetail` throws.
GraphComparison::Vertex buildTree(GraphComparison::Tree& tree, const PairIndex& index,
                                  const std::vector<Pairing>& pairings,
                                  DetailComparisons& compareDetail);

}  // namespace dependency::comparisons
