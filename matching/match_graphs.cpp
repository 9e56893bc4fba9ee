// One key table for both sides: a later item of a side replaces an earlier one with the same key,
// and nodes are collected after all groups, so that a node replaces a group and never the reverse.
#include <dependency/comparisons/match_graphs.h>

#include <array>
#include <unordered_map>

#include "core/file_nodes.h"
#include "matching/item_equality.h"
#include "matching/match_key.h"

namespace dependency::comparisons {

using ::comparisons::indexOf;
using ::comparisons::Side;

namespace {

std::vector<Item> collectFileItems(const std::shared_ptr<const graph::Graph>& graph) {
    const auto files = fileNodes(*graph);
    std::vector<Item> items;
    for (const auto& file : files) {
        for (auto& group : ParallelDependencies::createParallelDependencies(graph, file)) {
            items.emplace_back(std::move(group));
        }
    }
    items.insert(items.end(), files.begin(), files.end());
    return items;
}

ItemEdit takeEdit(std::optional<Item> left, std::optional<Item> right) {
    const bool changed = left && right && !itemsEqual(*left, *right);
    return {std::move(left), std::move(right), changed};
}

struct MatchKey {
    std::u16string_view operator()(const std::shared_ptr<const graph::Graph>&) const { return {}; }
    std::u16string_view operator()(const std::shared_ptr<graph::Node>& node) const {
        return node->getID();
    }
    std::u16string_view operator()(const ParallelDependencies& group) const { return group.id; }
};

}  // namespace

std::u16string_view matchKey(const Item& item) {
    return std::visit(MatchKey{}, item);
}

std::vector<ItemEdit> matchGraphs(const std::shared_ptr<const graph::Graph>& left,
                                  const std::shared_ptr<const graph::Graph>& right) {
    std::array items{collectFileItems(left), collectFileItems(right)};

    using Slots = std::array<Item*, 2>;
    std::unordered_map<std::u16string_view, Slots> table;
    table.reserve(items[0].size() + items[1].size());
    for (const Side side : ::comparisons::sides) {
        for (Item& item : items[indexOf(side)]) {
            table[matchKey(item)][indexOf(side)] = &item;
        }
    }

    const auto take = [](Item* slot) {
        return slot == nullptr ? std::optional<Item>() : std::optional<Item>(std::move(*slot));
    };
    std::vector<ItemEdit> edits;
    edits.reserve(table.size() + 1);
    edits.push_back(takeEdit(left, right));
    for (const auto& [key, slots] : table) {
        edits.push_back(takeEdit(take(slots[0]), take(slots[1])));
    }
    return edits;
}

}  // namespace dependency::comparisons
