#pragma once
// A finished comparison: a tree of two-sided edits, each with its detail comparison.
#include <concepts>
#include <cstdint>
#include <future>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <boost/container/static_vector.hpp>
#include <boost/graph/adjacency_list.hpp>
#include <boost/range/iterator_range.hpp>

#include <comparisons/comparison_value.h>
#include <comparisons/display_order.h>
#include <comparisons/export.h>
#include <comparisons/side.h>
#include <comparisons/stateful_edit.h>

namespace comparisons {

template <class Edit>
struct TreeEntry {
    /// The index among the children of the entry's parent on that side, hidden ones counted; empty
    /// if it has no parent there.
    BySide<std::optional<std::uint32_t>> positions;
    /// Ready if it is valid; not valid if no subcomparator accepted the edit.
    std::shared_future<ComparisonValue> detail;
    Edit edit;
};

/// A parent-child link, with the sides on which it exists in the order in which they were recorded.
struct TreeLink {
    boost::container::static_vector<Side, 2> sides;
};

/// Links run from parent to child, at most one between two entries.
template <class Edit>
using ComparisonTree = boost::adjacency_list<boost::setS, boost::listS, boost::bidirectionalS,
                                             TreeEntry<Edit>, TreeLink>;

/// Adds an entry without edit, positions and links, after all others.
///
/// Returns: its vertex.
template <class Edit>
typename ComparisonTree<Edit>::vertex_descriptor addEntry(ComparisonTree<Edit>& tree) {
    // boost::add_vertex loses the vertex if there is no memory left to list it.
    auto vertex = std::make_unique<typename ComparisonTree<Edit>::stored_vertex>();
    tree.m_vertices.push_back(vertex.get());
    vertex->m_position = std::prev(tree.m_vertices.end());
    return vertex.release();
}

/// An immutable comparison tree.
template <class Edit>
class TreeComparison {
  public:
    using Tree = ComparisonTree<Edit>;
    using Vertex = typename Tree::vertex_descriptor;

    struct Child {
        Vertex vertex;
        bool orderMove = false;
        bool hierarchyMove = false;
    };

    /// Lets `fill` build the tree in place.
    ///
    /// Requires: `fill` adds vertices and links to the empty tree that it is given, and returns the
    ///           vertex of the root.
    template <std::invocable<Tree&> Fill>
    explicit TreeComparison(Fill&& fill) : root_(std::forward<Fill>(fill)(tree_)) {}

    TreeComparison(const TreeComparison&) = delete;
    TreeComparison& operator=(const TreeComparison&) = delete;
    ~TreeComparison() = default;

    [[nodiscard]] const Tree& tree() const noexcept { return tree_; }
    [[nodiscard]] Vertex root() const noexcept { return root_; }
    [[nodiscard]] const TreeEntry<Edit>& operator[](Vertex vertex) const { return tree_[vertex]; }

    /// Order: as the entries were made.
    [[nodiscard]] auto entries() const {
        return boost::make_iterator_range(boost::vertices(tree_));
    }

    /// Returns: the children of both sides, merged for display; see `displayOrder`.
    [[nodiscard]] std::vector<Child> children(Vertex parent) const;

  private:
    Tree tree_;
    Vertex root_;
};

namespace detail {
[[nodiscard]] COMPARISONS_EXPORT const std::string& treeComparisonType();
}

/// Returns: "treeComparison".
template <class Edit>
[[nodiscard]] const std::string& get_type(const TreeComparison<Edit>& /*comparison*/) {
    return detail::treeComparisonType();
}

template <class Edit>
auto TreeComparison<Edit>::children(Vertex parent) const -> std::vector<Child> {
    std::vector<Vertex> vertices;
    std::vector<ChildPositions> positions;
    for (const auto& link : boost::make_iterator_range(boost::out_edges(parent, tree_))) {
        const Vertex child = boost::target(link, tree_);
        ChildPositions& added = positions.emplace_back();
        for (const Side side : tree_[link].sides) {
            added.positions[side] = tree_[child].positions[side];
        }
        added.matched = hasBothSides(tree_[child].edit);
        vertices.push_back(child);
    }
    std::vector<Child> children;
    for (const DisplayedChild& child : displayOrder(positions)) {
        children.push_back({.vertex = vertices[child.index],
                            .orderMove = child.orderMove,
                            .hierarchyMove = child.hierarchyMove});
    }
    return children;
}

}  // namespace comparisons
