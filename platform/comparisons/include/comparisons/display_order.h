#pragma once
// One list of children out of two: how the sides of a comparison are merged for display.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <comparisons/export.h>
#include <comparisons/side.h>

namespace comparisons {

/// A child as one parent sees it.
struct ChildPositions {
    /// The index among this parent's children on that side; empty if it is not among them.
    BySide<std::optional<std::uint32_t>> positions;
    bool matched = false;  ///< both sides have the child, under whatever parents
};

struct DisplayedChild {
    std::size_t index = 0;       ///< into the children given
    bool orderMove = false;      ///< the sides order it differently among its matched siblings
    bool hierarchyMove = false;  ///< it has another parent on the left
};

/// Merges the children of one parent.
///
/// Order:   children on the right are in right order; between two matched children that keep their
///          order, left-only ones come before right-only ones, in left order. The fewest matched
///          children that explain a different order are order moves (of several smallest choices
///          always the same one); they and hierarchy moves appear at their place on the right.
/// Returns: every child except matched ones that the right side has under another parent.
/// Complexity: n log n.
[[nodiscard]] COMPARISONS_EXPORT std::vector<DisplayedChild> displayOrder(
    std::span<const ChildPositions> children);

}  // namespace comparisons
