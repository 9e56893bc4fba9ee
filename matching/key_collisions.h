#pragma once
// Whether joined IDs can be told apart by the IDs they are made of.
#include "core/pair_index.h"

namespace dependency::comparisons {

/// Two items have one matching key without having the same IDs only if one ID is a proper prefix of
/// another, u2 = u1 + s, and a node that u1 depends on has an ID that starts with s; or if an ID is
/// empty.
///
/// Returns: false only where no two such items exist on the sides taken together; true also where
///          the search would cost more than the general way of pairing.
[[nodiscard]] bool keysMayCoincide(const PairIndex& index);

}  // namespace dependency::comparisons
