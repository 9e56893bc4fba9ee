#pragma once
// Why each link was added, removed or changed.
#include <cstddef>
#include <span>
#include <vector>

#include <dependency/insight/export.h>
#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// How many added or removed links have each cause; a link has the first that holds.
struct LinkCauses {
    std::size_t rename = 0;    ///< with its ends renamed it is a link of the other side
    std::size_t file = 0;      ///< its upstream file is of one side only
    std::size_t target = 0;    ///< its downstream node is of one side only
    std::size_t rewiring = 0;  ///< both ends are common

    [[nodiscard]] std::size_t all() const noexcept { return rename + file + target + rewiring; }
    friend bool operator==(const LinkCauses&, const LinkCauses&) = default;
};

/// How many links of both sides differ in what.
struct ChangeCauses {
    std::size_t components = 0;
    std::size_t types = 0;
    std::size_t ends = 0;

    [[nodiscard]] std::size_t all() const noexcept { return components + types + ends; }
    friend bool operator==(const ChangeCauses&, const ChangeCauses&) = default;
};

/// A node of one side that common files need.
struct Target {
    Number node = 0;
    Edit edit = Edit::added;
    std::size_t files = 0;  ///< the links with the cause `target` that lead to it

    friend bool operator==(const Target&, const Target&) = default;
};

struct Rewiring {
    Link link;
    Edit edit = Edit::added;

    friend bool operator==(const Rewiring&, const Rewiring&) = default;
};

struct Causes {
    LinkCauses added;
    LinkCauses removed;
    ChangeCauses changed;
    std::vector<Target> targets;    ///< by number of files, descending, then by node
    std::vector<Rewiring> rewired;  ///< by link

    friend bool operator==(const Causes&, const Causes&) = default;
};

/// Counts the links that leave a file; one that leaves a file on one side only is on that side
/// only. If all types of dependencies are selected, the sums are the numbers of added, removed and
/// changed groups of the comparison, provided that no two joined IDs of a side coincide.
///
/// Requires: each left node of `renames` is on the left only, each right one on the right only, and
///           none occurs twice.
/// Throws:   `std::invalid_argument` for others.
/// Complexity: linear in nodes and links, plus a logarithmic search per removed link and the sorts
///           of the results.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT Causes findCauses(const LinkGraph& graph,
                                                          std::span<const NodePair> renames = {});

}  // namespace dependency::insight
