#pragma once
// The position of each item among the children of its parent on its own side.
#include <vector>

#include "core/pair_index.h"

namespace dependency::comparisons {

/// Returns: by item number, the index counted from 0 in the order that `GraphTraversalModel` gives.
[[nodiscard]] std::vector<Number> siblingPositions(const SideIndex& side);

}  // namespace dependency::comparisons
