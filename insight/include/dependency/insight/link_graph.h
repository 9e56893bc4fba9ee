#pragma once
// Both graphs by numbers that agree: what every other part of this library reads.
//
//     left:  A -> B          numbers: A 0, B 1, C 2
//     right: A -> B, A -> C  from(0): 1 {left, right}, 2 {right};  into(2): 0 {right}
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <dependency/graph/graph.h>
#include <dependency/insight/export.h>

namespace dependency::insight {

enum class Side : std::uint8_t { left, right };
inline constexpr std::array sides{Side::left, Side::right};

[[nodiscard]] constexpr Side otherSide(Side side) noexcept {
    return side == Side::left ? Side::right : Side::left;
}

/// One value per side.
template <class T>
struct BySide {
    T left{};
    T right{};

    [[nodiscard]] constexpr T& operator[](Side side) noexcept {
        return side == Side::left ? left : right;
    }
    [[nodiscard]] constexpr const T& operator[](Side side) const noexcept {
        return side == Side::left ? left : right;
    }
    friend bool operator==(const BySide&, const BySide&) = default;
};

/// Stands for a node of either side. Numbers order as IDs do; equal IDs have one number.
using Number = std::uint32_t;
inline constexpr Number none = std::numeric_limits<Number>::max();

/// Added: on the right only. Removed: on the left only.
enum class Edit : std::uint8_t { added, removed, common };

/// A pair of nodes with at least one dependency from the one to the other.
struct Link {
    Number upstream = 0;
    Number downstream = 0;

    friend auto operator<=>(const Link&, const Link&) = default;
};

/// A node of the left side and the node of the right side that it became.
struct NodePair {
    Number left = 0;
    Number right = 0;

    friend auto operator<=>(const NodePair&, const NodePair&) = default;
};

/// Which links count: all, or those alone that have a dependency which is not soft.
enum class Strength : std::uint8_t { all, hard };

/// In what the dependencies of a link on both sides differ.
enum class LinkChange : std::uint8_t {
    nothing,
    components,  ///< as many of each type, but not with the same components
    types,       ///< other types, or another number of one
    ends,        ///< in nothing but the content of an end node
};

/// What is known of one link.
class LinkState {
  public:
    LinkState() = default;

    [[nodiscard]] bool on(Side side, Strength strength = Strength::all) const noexcept {
        return (bits_ & bit(side, strength)) != 0;
    }
    /// Requires: the link is on a side, counted by `strength`.
    [[nodiscard]] Edit edit(Strength strength = Strength::all) const noexcept {
        return !on(Side::left, strength)    ? Edit::added
               : !on(Side::right, strength) ? Edit::removed
                                            : Edit::common;
    }
    /// Returns: `LinkChange::nothing` for a link of one side.
    [[nodiscard]] LinkChange change() const noexcept { return change_; }

    void put(Side side, Strength strength) noexcept { bits_ |= bit(side, strength); }
    void put(LinkChange change) noexcept { change_ = change; }

  private:
    static constexpr std::uint8_t bit(Side side, Strength strength) noexcept {
        return static_cast<std::uint8_t>((side == Side::left ? 1U : 2U)
                                         << (strength == Strength::all ? 0U : 2U));
    }

    std::uint8_t bits_ = 0;
    LinkChange change_ = LinkChange::nothing;
};

/// A link as seen from one of its ends.
struct LinkEnd {
    Number node = 0;  ///< the other end
    LinkState state;
};

struct LinkOptions {
    /// The ID that people know a node by, valid as long as the node; empty: its own.
    ///
    /// Requires: orders nodes as their own IDs do, and tells apart what those tell apart.
    std::function<std::u16string_view(const graph::Node&)> displayedID = {};
    /// Whether dependencies of the type with this ID count; empty: all do.
    std::function<bool(std::u16string_view)> isSelected = {};
    /// Whether dependencies of the type with this ID are soft; empty: none is.
    std::function<bool(std::u16string_view)> isSoft = {};
};

/// The nodes of two graphs and the links between them, with the sides that have each.
///
/// Lifetime: keeps the nodes of both graphs alive.
/// Threads:  any number may read.
class DEPENDENCY_INSIGHT_EXPORT LinkGraph {
  public:
    /// Requires: both non-null; neither graph changes while this one is made.
    /// Throws:   `std::invalid_argument` for a dependency that leads to a node which its graph does
    ///           not list, `std::length_error` for more nodes or links than can be numbered, and
    ///           what the graph model, the options or an allocation throws.
    /// Complexity: linear in nodes and dependencies, plus the sorts of nodes by ID and of the
    ///           dependencies of each node by downstream node.
    LinkGraph(const std::shared_ptr<const graph::Graph>& left,
              const std::shared_ptr<const graph::Graph>& right, const LinkOptions& options = {});

    /// Returns: how many nodes there are over both sides; their numbers are all below.
    [[nodiscard]] Number nodeCount() const noexcept { return static_cast<Number>(nodes_.size()); }
    [[nodiscard]] std::size_t linkCount() const noexcept { return downstream_.size(); }

    /// Returns: the displayed ID; valid as long as this graph.
    [[nodiscard]] std::u16string_view id(Number node) const { return nodes_[node].id; }
    /// Returns: the node of a side, null if the side lacks it.
    [[nodiscard]] const std::shared_ptr<const graph::Node>& node(Number node, Side side) const {
        return nodes_[node].bySide[side];
    }
    [[nodiscard]] bool has(Number node, Side side) const {
        return this->node(node, side) != nullptr;
    }
    /// Returns: whether the side has the node, and as a file.
    [[nodiscard]] bool isFile(Number node, Side side) const { return nodes_[node].isFile[side]; }
    [[nodiscard]] Edit edit(Number node) const {
        return !has(node, Side::left)    ? Edit::added
               : !has(node, Side::right) ? Edit::removed
                                         : Edit::common;
    }
    /// Returns: the node with this displayed ID.
    /// Complexity: logarithmic.
    [[nodiscard]] std::optional<Number> find(std::u16string_view id) const;

    /// Order: by the number of the downstream node.
    [[nodiscard]] std::span<const LinkEnd> from(Number node) const {
        return std::span(downstream_)
            .subspan(firstFrom_[node], firstFrom_[node + 1] - firstFrom_[node]);
    }
    /// Order: by the number of the upstream node.
    [[nodiscard]] std::span<const LinkEnd> into(Number node) const {
        return std::span(upstream_).subspan(firstInto_[node],
                                            firstInto_[node + 1] - firstInto_[node]);
    }
    /// Returns: what is known of a link, null if neither side has it.
    /// Complexity: logarithmic in the links that leave the upstream node.
    [[nodiscard]] const LinkState* find(Link link) const;

  private:
    class Builder;

    struct Entry {
        std::u16string_view id;
        BySide<std::shared_ptr<const graph::Node>> bySide;
        BySide<bool> isFile;
    };

    std::vector<Entry> nodes_;
    std::vector<Number> firstFrom_;  // by node, and one past the last
    std::vector<LinkEnd> downstream_;
    std::vector<Number> firstInto_;  // likewise
    std::vector<LinkEnd> upstream_;
};

}  // namespace dependency::insight
