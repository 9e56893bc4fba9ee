#pragma once
// Which cycles two graphs have, and which links closed or opened one.
#include <cstddef>
#include <cstdint>
#include <vector>

#include <dependency/insight/export.h>
#include <dependency/insight/link_graph.h>

namespace dependency::insight {

enum class CycleEdit : std::uint8_t {
    added,    ///< no group on the left
    removed,  ///< no group on the right
    changed,  ///< nodes joined or parted, groups merged or split
};

/// The cycle groups of both sides that share a node, directly or through others of the family.
///
/// A cycle group of a side is a set of two or more nodes that all reach each other, or one node
/// with a link to itself.
struct CycleFamily {
    CycleEdit edit = CycleEdit::added;
    BySide<std::vector<std::vector<Number>>> groups;  ///< sorted, as are the nodes of each
    std::vector<Link> closing;                        ///< added links inside a right group; sorted
    std::vector<Link> opened;                         ///< removed links inside a left group; sorted
    /// The nodes of a shortest cycle, each once, from its smallest on: on the right through a
    /// closing link; for a removed family any on the left; empty for a changed one without closing
    /// links. Of several shortest ones the smallest sequence.
    std::vector<Number> cycle;

    friend bool operator==(const CycleFamily&, const CycleFamily&) = default;
};

struct Cycles {
    BySide<std::size_t> groups;         ///< how many there are
    std::size_t unchanged = 0;          ///< families with one group per side, with equal nodes
    std::vector<CycleFamily> families;  ///< the others, by their smallest node

    friend bool operator==(const Cycles&, const Cycles&) = default;
};

/// Finds the cycles among the links that count by `strength`; a link is then added or removed if
/// it counts on one side only.
///
/// Complexity: linear in nodes and links, and for the cycle of each family a search of bounded
///             depth per node that a candidate link leaves: constant if there is a short cycle, at
///             worst linear in the links of the family.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT Cycles findCycles(const LinkGraph& graph,
                                                          Strength strength = Strength::all);

}  // namespace dependency::insight
