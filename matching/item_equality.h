#pragma once
// Whether two paired items show a difference.
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// Compares contents across graphs: two graphs or two nodes by their properties alone, two groups
/// by their end nodes and dependencies. Items of different kinds count as equal, so that a pair
/// joined through coinciding keys never shows as changed.
[[nodiscard]] bool itemsEqual(const Item& a, const Item& b);

}  // namespace dependency::comparisons
