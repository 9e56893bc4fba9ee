#include "core/tree_build.h"

#include <functional>
#include <unordered_map>

#include "matching/match_key.h"

namespace dependency::comparisons {

using ::comparisons::indexOf;
using ::comparisons::Side;

namespace {

using Tree = GraphComparison::Tree;
using Vertex = GraphComparison::Vertex;

struct ItemHash {
    std::size_t operator()(const Item* item) const { return std::hash<Item>{}(*item); }
};
struct ItemsSame {
    bool operator()(const Item* a, const Item* b) const { return *a == *b; }
};
using ItemIndex = std::unordered_map<const Item*, Vertex, ItemHash, ItemsSame>;

ItemIndex indexItems(const Tree& tree) {
    ItemIndex index;
    index.reserve(2 * boost::num_vertices(tree));
    for (const Vertex vertex : boost::make_iterator_range(boost::vertices(tree))) {
        for (const Side side : ::comparisons::sides) {
            if (const auto& item = tree[vertex].edit[side]) {
                index.emplace(&*item, vertex);
            }
        }
    }
    return index;
}

struct ItemIDOf {
    ItemID operator()(const std::shared_ptr<const graph::Graph>& /*graph*/) const { return {}; }
    ItemID operator()(const std::shared_ptr<graph::Node>& node) const {
        return {.node = node->getID(), .downstream = std::nullopt};
    }
    ItemID operator()(const ParallelDependencies& group) const {
        return {.node = group.upstream->getID(), .downstream = group.downstream->getID()};
    }
};

[[noreturn]] void reportUnmatched(const Tree& tree, Side side, const Item& lost) {
    std::optional<ItemID> kept;
    for (const Vertex vertex : boost::make_iterator_range(boost::vertices(tree))) {
        const auto& item = tree[vertex].edit[side];
        if (item && item->index() != 0 && matchKey(*item) == matchKey(lost)) {
            kept = std::visit(ItemIDOf{}, *item);
        }
    }
    throw UnmatchedItemError(side, std::visit(ItemIDOf{}, lost), std::move(kept));
}

void linkChildren(Tree& tree, const ItemIndex& index, Vertex parent, Side side,
                  const std::vector<Item>& children) {
    std::uint32_t position = 0;
    for (const Item& child : children) {
        const auto found = index.find(&child);
        if (found == index.end()) {
            reportUnmatched(tree, side, child);
        }
        tree[found->second].positions[indexOf(side)] = position++;
        const auto link = boost::add_edge(parent, found->second, tree).first;
        tree[link].sides.push_back(side);
    }
}

}  // namespace

Vertex buildTree(Tree& tree, std::vector<ItemEdit> edits,
                 const std::array<GraphTraversalModel, 2>& models) {
    for (ItemEdit& edit : edits) {
        tree[boost::add_vertex(tree)].edit = std::move(edit);
    }
    const ItemIndex index = indexItems(tree);
    for (const Vertex parent : boost::make_iterator_range(boost::vertices(tree))) {
        for (const Side side : ::comparisons::sides) {
            if (const auto& item = tree[parent].edit[side]) {
                linkChildren(tree, index, parent, side, models[indexOf(side)](*item));
            }
        }
    }
    return *boost::vertices(tree).first;
}

}  // namespace dependency::comparisons
