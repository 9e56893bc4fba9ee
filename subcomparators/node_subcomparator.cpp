#include <dependency/comparisons/node_subcomparator.h>

#include "core/item_kind.h"
#include "subcomparators/detail_comparisons.h"
#include "subcomparators/property_pairing.h"

namespace dependency::comparisons {

using ::comparisons::ComparisonValue;
using ::comparisons::Side;

namespace {

std::vector<NodeProperty> collectNodeProperties(const std::optional<Item>& side,
                                                DisplayedNames& names) {
    if (!side) {
        return {};
    }
    const auto& node = std::get<std::shared_ptr<graph::Node>>(*side);
    const auto keys = node->getPropertyKeys();
    std::vector<NodeProperty> rows;
    rows.reserve(keys.size());
    for (const auto& key : keys) {
        rows.push_back({.name = names[key], .value = node->getProperty(key)});
    }
    return rows;
}

}  // namespace

const std::string& get_type(const NodePropertyComparison& /*comparison*/) {
    static const std::string type = "node_comparison";
    return type;
}

bool operator<(const NodePropertyEdit& a, const NodePropertyEdit& b) {
    return anySide(a).name < anySide(b).name;
}

NodeSubcomparator::~NodeSubcomparator() = default;

bool NodeSubcomparator::canCompare(const ItemEdit& edit) const {
    return std::holds_alternative<std::shared_ptr<graph::Node>>(anySide(edit));
}

std::future<ComparisonValue> NodeSubcomparator::compare(const ItemEdit& edit) {
    auto names = DisplayedNames::ofNodes();
    return ::comparisons::readyFuture(compareNodeProperties(edit, names, EditStates::unchecked));
}

NodePropertyComparison compareNodeProperties(const ItemEdit& edit, DisplayedNames& names,
                                             EditStates states) {
    // Equal nodes have the same keys and values, and so the same rows. A node that is paired with a
    // group counts as unchanged without being equal to it.
    const bool equal = states == EditStates::trusted && hasBothSides(edit) && !edit.isChanged() &&
                       kindOf(*edit[Side::right]) == ItemKind::node;
    auto left = collectNodeProperties(edit[Side::left], names);
    auto right = equal ? left : collectNodeProperties(edit[Side::right], names);
    return pairByName(std::move(left), std::move(right));
}

}  // namespace dependency::comparisons
