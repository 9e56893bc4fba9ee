#pragma once
// One index of both graphs, made once and read by every stage: files, downstream nodes and groups
// as numbers, so that pairing and ordering need neither strings nor hashing any more.
#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <comparisons/side.h>
#include <dependency/comparisons/item.h>
#include <dependency/graph/graph.h>

#include "core/node_numbers.h"

namespace dependency::comparisons {

/// The dependencies of one file to one node.
struct GroupRecord {
    Number file = 0;
    Number downstream = 0;  ///< node number
    Number first = 0;       ///< the place of the first of its dependencies in `SideIndex::links`
};

using Link = const std::shared_ptr<graph::Dependency>*;

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
    std::vector<Link> links;          ///< by group, then by dependency ID; none twice
    std::vector<GroupRecord> groups;  ///< by file, then by downstream rank
    std::vector<Number> firstGroup;   ///< by file, and one past the last

    [[nodiscard]] Number itemCount() const {
        return fileCount + static_cast<Number>(groups.size());
    }
    [[nodiscard]] bool isFile(Number item) const { return item < fileCount; }
    [[nodiscard]] const GroupRecord& group(Number item) const { return groups[item - fileCount]; }
    /// Requires: `group` stands in `groups`.
    [[nodiscard]] std::span<const Link> linksOf(const GroupRecord& group) const {
        const bool isLast = &group == &groups.back();
        return {links.data() + group.first,
                links.data() + (isLast ? links.size() : std::size_t{(&group)[1].first})};
    }
    [[nodiscard]] Number itemOfGroup(Number group) const { return fileCount + group; }
    /// Returns: the file with this rank, or `none`.
    [[nodiscard]] Number fileAt(Number rank) const {
        return nodeAt[rank] < fileCount ? nodeAt[rank] : none;
    }
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

    /// Makes the item with this number of `side` in the place where it stays.
    void makeItem(::comparisons::Side side, Number item, std::optional<Item>& place) const;

    std::array<SideIndex, 2> sides;
    std::vector<std::u16string_view> ids;  ///< by rank; ascending
};

}  // namespace dependency::comparisons
