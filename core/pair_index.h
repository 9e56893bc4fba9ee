#pragma once
// One index of both graphs, made once and read by every stage: files, downstream nodes and groups
// as numbers, so that pairing and ordering need neither strings nor hashing any more.
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include <comparisons/side.h>
#include <dependency/comparisons/item.h>
#include <dependency/graph/graph.h>

namespace dependency::comparisons {

using Number = std::uint32_t;
inline constexpr Number none = std::numeric_limits<Number>::max();

/// A dependency on its way into a group.
struct Link {
    Number downstream = 0;  ///< rank of the downstream node
    Number order = 0;       ///< place among the dependencies of its file
    const std::shared_ptr<graph::Dependency>* dependency = nullptr;
};

/// The dependencies of one file to one node.
struct GroupRecord {
    Number file = 0;
    Number downstream = 0;        ///< node number
    std::span<const Link> links;  ///< by dependency ID
};

/// One graph by numbers.
///
/// A node number stands for a node of this side, files first; an item number for a file (its node
/// number) or, behind the files, for a group.
struct SideIndex {
    std::shared_ptr<const graph::Graph> graph;
    std::vector<std::shared_ptr<graph::Node>> nodes;  ///< files, then other downstream nodes
    Number fileCount = 0;
    std::vector<Number> rankOf;       ///< by node number
    std::vector<Number> nodeAt;       ///< by rank; `none` where this side has no such node
    std::vector<Link> links;          ///< by file, downstream rank, dependency ID
    std::vector<GroupRecord> groups;  ///< by file, then by downstream rank
    std::vector<Number> firstGroup;   ///< by file, and one past the last

    [[nodiscard]] Number itemCount() const {
        return fileCount + static_cast<Number>(groups.size());
    }
    [[nodiscard]] bool isFile(Number item) const { return item < fileCount; }
    [[nodiscard]] const GroupRecord& group(Number item) const { return groups[item - fileCount]; }
    [[nodiscard]] Number itemOfGroup(Number group) const { return fileCount + group; }
    /// Returns: the file with this rank, or `none`.
    [[nodiscard]] Number fileAt(Number rank) const {
        return nodeAt[rank] < fileCount ? nodeAt[rank] : none;
    }
    [[nodiscard]] Item makeItem(Number item) const;
};

/// Both graphs by numbers that agree: nodes with equal IDs have one rank, and ranks order as IDs
/// do.
///
/// Requires: neither graph changes while the index lives.
struct PairIndex {
    PairIndex(const std::shared_ptr<const graph::Graph>& left,
              const std::shared_ptr<const graph::Graph>& right);
    PairIndex(const PairIndex&) = delete;
    PairIndex& operator=(const PairIndex&) = delete;

    [[nodiscard]] const SideIndex& operator[](::comparisons::Side side) const {
        return sides[::comparisons::indexOf(side)];
    }

    std::array<SideIndex, 2> sides;
    std::vector<std::u16string_view> ids;  ///< by rank; ascending
};

}  // namespace dependency::comparisons
