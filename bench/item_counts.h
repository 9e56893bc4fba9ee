#pragma once
// Counts what a comparison found, to hold it against what was generated.
#include <dependency/comparisons/item.h>

#include "generator.h"

namespace depcompare::bench {

/// Adds one pair of files or of groups; the pair of graphs counts as nothing.
void addTo(ItemCounts& counts, const dependency::comparisons::ItemEdit& edit);

}  // namespace depcompare::bench
