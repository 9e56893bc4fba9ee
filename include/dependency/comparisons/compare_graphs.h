#pragma once
// The entry point: two graphs in, one finished comparison out.
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include <comparisons/tree_comparison.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// A finished comparison: a tree of two-sided edits, each with its detail comparison.
using GraphComparison = ::comparisons::TreeComparison<ItemEdit>;

/// Names an item: a node by its ID, a group by the IDs of its two ends.
struct ItemID {
    std::u16string node;                       ///< for a group, its upstream node
    std::optional<std::u16string> downstream;  ///< of a group only

    friend bool operator==(const ItemID&, const ItemID&) = default;
};

/// An item has no entry because another item of its side has the same matching key. Cannot happen
/// if all joined IDs of a side are distinct.
class DEPENDENCY_COMPARISONS_EXPORT UnmatchedItemError : public std::logic_error {
  public:
    UnmatchedItemError(::comparisons::Side side, ItemID lost, std::optional<ItemID> kept);
    ~UnmatchedItemError() override;

    [[nodiscard]] ::comparisons::Side side() const noexcept { return side_; }
    [[nodiscard]] const ItemID& lost() const noexcept { return lost_; }
    /// Returns: the item that has the key of the lost one instead, if it is known.
    [[nodiscard]] const std::optional<ItemID>& kept() const noexcept { return kept_; }

  private:
    ::comparisons::Side side_;
    ItemID lost_;
    std::optional<ItemID> kept_;
};

/// Compares `left` with `right`: the graphs at the root, their files below it, and under each file
/// its groups of parallel dependencies.
///
/// The detail comparison of an entry is a `GraphPropertyComparison`, a `NodePropertyComparison`, or
/// a `::comparisons::CombinedComparison` with one `DependencyComparison` per dependency type.
///
/// Requires: both non-null; neither graph changes while the result lives.
/// Returns:  never null; owned by the caller alone; keeps both graphs alive; every future in it is
///           ready.
/// Order:    each entry records its position per side; the tree's links themselves are unordered.
/// Throws:   `UnmatchedItemError`; `std::bad_variant_access` if coinciding keys pair a node with a
///           group across the sides; `std::length_error` for graphs with 2^32 - 1 or
///           more nodes and dependencies in all; what the graph model, the message catalog or an allocation
///           throws. Then nothing is returned.
/// Complexity: linear in files, groups and dependencies, plus their sorts, whatever their IDs.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT std::shared_ptr<GraphComparison> compareGraphs(
    const std::shared_ptr<const graph::Graph>& left,
    const std::shared_ptr<const graph::Graph>& right);

}  // namespace dependency::comparisons
