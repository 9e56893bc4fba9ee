#pragma once
// Which items of the two sides belong together.
#include <vector>

#include "core/pair_index.h"

namespace dependency::comparisons {

/// A pair of items with one matching key, or an item whose key the other side lacks.
struct Pairing {
    BySide<Number> items{none, none};  ///< item numbers; `none` if absent
};

/// Of several items of one side with one key, a file rather than a group stays, and else the one
/// that comes last.
///
/// Returns: one pairing per matching key of both sides.
/// Order:   those that hold a file first; the same whenever the same graphs are paired.
/// Complexity: linear in the items, whatever their IDs.
[[nodiscard]] std::vector<Pairing> pairItems(const PairIndex& index);

}  // namespace dependency::comparisons
