#pragma once
// Whether joined IDs can be told apart by the IDs they are made of.
#include "core/pair_index.h"

namespace dependency::comparisons {

/// Two items with different IDs have one matching key only if one ID is a proper prefix of another,
/// u2 = u1 + s, and a node that u1 depends on is called s + d, where u2 depends on d or, d being
/// empty, is a file itself; or if an ID is empty.
///
/// Returns: false only where no two such items exist on the sides taken together; true also where
///          the search would cost more than the general way of pairing.
[[nodiscard]] bool keysMayCoincide(const PairIndex& index);

}  // namespace dependency::comparisons
