#pragma once
// What files reach, directly or not, and through which links their reach grew.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <dependency/insight/export.h>
#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// A node reaches another one if a path of links leads there; here it never counts itself.
struct SideReach {
    std::uint64_t pairs = 0;  ///< of a file and a node that it reaches
    /// The propagation cost: the mean share of the other nodes that a file reaches; 0 without files
    /// or other nodes.
    double cost = 0;

    friend bool operator==(const SideReach&, const SideReach&) = default;
};

/// A file of both sides that does not reach the same nodes on both.
struct FileReach {
    Number file = 0;
    BySide<Number> reach;  ///< how many nodes it reaches
    Number gained = 0;     ///< reached on the right only
    Number lost = 0;       ///< reached on the left only
    /// Where its reach begins to grow: a shortest path on the right, from the file to the nearest
    /// node that it gained, whose last link is an added one. Of several the smallest sequence;
    /// empty if it gained none.
    std::vector<Number> path;

    friend bool operator==(const FileReach&, const FileReach&) = default;
};

/// An added link that leaves a node of both sides.
struct LinkReach {
    Link link;
    Number gained = 0;      ///< nodes that its upstream end reaches by it and did not on the left
    Number dependents = 0;  ///< other files that reach its upstream end on the right

    friend bool operator==(const LinkReach&, const LinkReach&) = default;
};

struct Reach {
    BySide<SideReach> sides;
    std::vector<FileReach> files;  ///< the first by gained + lost, descending, then number
    std::size_t filesAll = 0;      ///< how many there are
    std::vector<LinkReach>
        links;  ///< the first by gained * (dependents + 1), descending, then link
    std::size_t linksAll = 0;

    friend bool operator==(const Reach&, const Reach&) = default;
};

struct ReachLimits {
    std::uint64_t work = 4'000'000'000;  ///< operations on words of 64 bits
    std::size_t files = 1'000;           ///< how many to list
    std::size_t links = 1'000;
};

/// Counts exactly.
///
/// Returns: nothing if the counts would take more than `limits.work`, which is known beforehand.
/// Complexity: nodes times links between strongly connected components, by 64. Memory: linear in
///          nodes and links.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT std::optional<Reach> findReach(
    const LinkGraph& graph, const ReachLimits& limits = {});

}  // namespace dependency::insight
