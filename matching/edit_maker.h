#pragma once
// From pairings by number to edits of items that say whether their sides differ.
#include <cstdint>
#include <vector>

#include "core/pair_index.h"
#include "matching/pairing.h"

namespace dependency::comparisons {

/// Makes the edits of one pair of graphs.
///
/// Contents are compared across the graphs: two graphs or two nodes by their properties alone, two
/// groups by their end nodes and dependencies. Items of different kinds count as equal, so that a
/// pair joined through coinciding keys never shows as changed.
class EditMaker {
  public:
    /// Lifetime: as long as the index, from which the items are taken.
    explicit EditMaker(PairIndex& index) : index_(index), comparedNodes_(index.ids.size()) {}

    /// Returns: the edit of the two graphs, with its state.
    [[nodiscard]] ItemEdit ofGraphs() const;

    /// Makes the edit that shows the pairing, with its state, in the place where it stays.
    ///
    /// Requires: `edit` has no side yet; the pairing was not filled in before.
    void fill(ItemEdit& edit, const Pairing& pairing);

  private:
    enum class Compared : std::uint8_t { notYet, equal, different };

    [[nodiscard]] bool equal(const ItemEdit& edit, const Pairing& pairing);
    [[nodiscard]] bool endsEqual(Number left, Number right);

    PairIndex& index_;
    std::vector<Compared> comparedNodes_;  // by rank
};

}  // namespace dependency::comparisons
