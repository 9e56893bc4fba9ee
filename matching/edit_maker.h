#pragma once
// From pairings by number to edits of items.
#include "core/pair_index.h"
#include "matching/item_equality.h"
#include "matching/pairing.h"

namespace dependency::comparisons {

/// Makes the edits of one pair of graphs.
class EditMaker {
  public:
    /// Lifetime: as long as the index.
    explicit EditMaker(const PairIndex& index) : index_(index), equal_(index) {}

    /// Returns: the edit of the two graphs, with its state.
    [[nodiscard]] ItemEdit ofGraphs() const;

    /// Makes the edit that shows the pairing, with its state, in the place where it stays.
    ///
    /// Requires: `edit` has no side yet.
    void fill(ItemEdit& edit, const Pairing& pairing) const;

  private:
    const PairIndex& index_;
    ItemEquality equal_;
};

}  // namespace dependency::comparisons
