#pragma once
// Which items of the two sides belong together.
#include <array>
#include <vector>

#include "core/pair_index.h"

namespace dependency::comparisons {

/// A pair of items with one matching key, or an item whose key the other side lacks.
struct Pairing {
    std::array<Number, 2> items{none, none};  ///< item numbers by side; `none` where absent

    friend bool operator==(const Pairing&, const Pairing&) = default;
};

/// Returns: a pairing per matching key of both sides.
/// Order:   one that holds a file of either side before those that hold a group of that file, those
///          excepted that pair a group with a file.
[[nodiscard]] std::vector<Pairing> pairItems(const PairIndex& index);

/// The way for keys that cannot coincide: equal keys mean equal end nodes, so that ranks tell it
/// all.
///
/// Requires: `!keysMayCoincide(index)`.
[[nodiscard]] std::vector<Pairing> pairByRank(const PairIndex& index);

/// The way for any keys: a table of joined IDs, in which a later item of a side replaces an earlier
/// one, and a file replaces a group.
[[nodiscard]] std::vector<Pairing> pairByKey(const PairIndex& index);

}  // namespace dependency::comparisons
