#pragma once
// Whether two paired items show a difference.
#include <cstdint>
#include <vector>

#include "core/pair_index.h"
#include "matching/pairing.h"

namespace dependency::comparisons {

/// Compares contents across graphs: two graphs or two nodes by their properties alone, two groups
/// by their end nodes and dependencies. Items of different kinds count as equal, so that a pair
/// joined through coinciding keys never shows as changed.
class ItemEquality {
  public:
    /// Lifetime: as long as the index.
    /// Complexity: linear in the nodes, whose contents are compared here, once for all groups.
    explicit ItemEquality(const PairIndex& index);

    [[nodiscard]] bool ofGraphs() const;

    /// Requires: both items are present.
    [[nodiscard]] bool operator()(const Pairing& pairing) const;

  private:
    [[nodiscard]] bool groupsEqual(const GroupRecord& a, const GroupRecord& b) const;
    [[nodiscard]] bool endsEqual(Number a, Number b) const;

    const PairIndex& index_;
    std::vector<std::uint8_t> equalNodes_;  // by rank; 0 where a side has no such node
};

}  // namespace dependency::comparisons
