#pragma once
// Which parts of a project need which, and what came and went outside of its files.
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <dependency/insight/export.h>
#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// What makes an area. By default the folder of a file: the leading components of its displayed ID,
/// the last component left out, at most `depth` of them; "." if there is none.
struct AreaOptions {
    std::u16string separator = u"/";
    /// Absent: the greatest of 1, 2 and 3 with at most 60 areas over both sides, else 1.
    std::optional<std::size_t> depth = {};
    /// If given, the value of this node property is the area, of files and of other nodes; files
    /// without it are in ".".
    std::optional<std::u16string> property = {};
};

struct Area {
    std::u16string name;
    BySide<std::size_t> files;
    std::size_t added = 0;    ///< files of the right that are none on the left
    std::size_t removed = 0;  ///< files of the left that are none on the right
    std::size_t changed = 0;  ///< files of both sides with other properties, counted on the right
    BySide<std::size_t> inside;  ///< links between two of its nodes
    BySide<std::size_t> out;     ///< links to nodes of other areas
    BySide<std::size_t> in;      ///< links from nodes of other areas

    friend bool operator==(const Area&, const Area&) = default;
};

/// The links that lead from one area to another, if they are not the same on both sides.
struct AreaLink {
    std::size_t from = 0;  ///< index of an area
    std::size_t to = 0;
    BySide<std::size_t> links;
    std::size_t added = 0;    ///< links that lead from the one to the other on the right only
    std::size_t removed = 0;  ///< ... on the left only
    /// At most three of them, added ones before removed ones, then by number.
    std::vector<Link> examples;

    friend bool operator==(const AreaLink&, const AreaLink&) = default;
};

struct Areas {
    std::size_t depth = 0;        ///< 0 for areas by property
    std::vector<Area> areas;      ///< by name
    std::vector<AreaLink> links;  ///< by `from`, then by `to`

    friend bool operator==(const Areas&, const Areas&) = default;
};

/// Requires: a separator that is not empty, a depth of 1 or more.
/// Throws:   `std::invalid_argument` for others.
/// Complexity: linear in nodes, properties and links, plus sorts of areas and of the pairs of areas
///           that differ.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT Areas findAreas(const LinkGraph& graph,
                                                        const AreaOptions& options = {});

/// A node of one side that is not a file and that files need.
struct OtherNode {
    Number node = 0;
    std::size_t files = 0;  ///< files with a link to it

    friend bool operator==(const OtherNode&, const OtherNode&) = default;
};

struct OtherNodes {
    std::vector<OtherNode> added;  ///< by number of files, descending, then by node
    std::vector<OtherNode> removed;

    friend bool operator==(const OtherNodes&, const OtherNodes&) = default;
};

/// Complexity: linear in nodes and links, plus the sorts of the results.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT OtherNodes findOtherNodes(const LinkGraph& graph);

}  // namespace dependency::insight
