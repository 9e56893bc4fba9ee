#pragma once
// One index of both graphs, made once and read by every stage: files, downstream nodes and groups
// as numbers, so that later stages compare integers only.
//
// The numbers of one side, for the files "a" and "b", a library "l", two dependencies a -> b (1 and
// 2), one a -> l (3) and one b -> a (4):
//
//     nodes    0 a       1 b    | 2 l             files first
//     groups   0 a -> b  1 a -> l  2 b -> a       firstGroup: 0 2 3, by file
//     links    1 2       3         4              first: 0 2 3, by group
//     items    0 a       1 b    | 2 a -> b  3 a -> l  4 b -> a
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <comparisons/side.h>
#include <dependency/comparisons/item.h>
#include <dependency/graph/graph.h>

#include "core/text_hash.h"

namespace dependency::comparisons {

using ::comparisons::BySide;

using Number = std::uint32_t;
inline constexpr Number none = std::numeric_limits<Number>::max();

/// The dependencies of one file to one node.
struct GroupRecord {
    Number file = 0;
    Number downstream = 0;  ///< node number
    Number first = 0;       ///< the place of its first dependency in `SideIndex::links`
};

/// One graph by numbers.
///
/// A node number is that of a node of this side, files first; an item number is that of a file (its
/// node number) or, after the files, of a group.
struct SideIndex {
    std::shared_ptr<const graph::Graph> graph;
    std::vector<std::shared_ptr<graph::Node>> nodes;  ///< files, then other downstream nodes
    Number fileCount = 0;
    std::vector<Number> rankOf;  ///< by node number
    std::vector<Number> nodeAt;  ///< by rank; `none` if this side has no such node
    std::vector<std::shared_ptr<graph::Dependency>> links;  ///< by group, then by ID; none twice
    std::vector<GroupRecord> groups;  ///< by file, then by downstream rank; then one past the last
    std::vector<Number> firstGroup;   ///< by file, and one past the last

    [[nodiscard]] Number itemCount() const { return itemOfGroup(firstGroup.back()); }
    [[nodiscard]] bool isFile(Number item) const { return item < fileCount; }
    [[nodiscard]] Number itemOfGroup(Number group) const { return fileCount + group; }
    /// Requires: not a file.
    [[nodiscard]] const GroupRecord& group(Number item) const { return groups[item - fileCount]; }
    /// Returns: the dependencies of a group.
    /// Requires: not a file.
    [[nodiscard]] std::span<std::shared_ptr<graph::Dependency>> linksOf(Number item) {
        const Number group = item - fileCount;
        const Number first = groups[group].first;
        return std::span(links).subspan(first, groups[group + 1].first - first);
    }
};

/// Both graphs by numbers that agree: nodes with equal IDs have one rank, and ranks order as IDs
/// do.
///
/// Requires: neither graph changes while the index lives.
struct PairIndex {
    /// Throws: `std::length_error` for graphs with more nodes and dependencies than there are
    ///         numbers.
    PairIndex(const std::shared_ptr<const graph::Graph>& left,
              const std::shared_ptr<const graph::Graph>& right);
    PairIndex(const PairIndex&) = delete;
    PairIndex& operator=(const PairIndex&) = delete;

    [[nodiscard]] const SideIndex& operator[](::comparisons::Side side) const {
        return sides[side];
    }

    /// Makes the item with this number of `side` in the place where it stays. The dependencies of a
    /// group leave the index: each item can be taken once.
    void takeItem(::comparisons::Side side, Number item, std::optional<Item>& place);

    BySide<SideIndex> sides;
    std::vector<std::u16string_view> ids;  ///< by rank; ascending
    std::vector<HashedText> hashes;        ///< of the IDs, by rank
};

}  // namespace dependency::comparisons
