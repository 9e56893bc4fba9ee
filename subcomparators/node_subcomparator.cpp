#include <dependency/comparisons/node_subcomparator.h>

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
    std::vector<NodeProperty> rows;
    for (const auto& key : node->getPropertyKeys()) {
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
    return ::comparisons::readyFuture(compareNodeProperties(edit, names));
}

NodePropertyComparison compareNodeProperties(const ItemEdit& edit, DisplayedNames& names) {
    return NodePropertyComparison(pairByName(collectNodeProperties(edit[Side::left], names),
                                             collectNodeProperties(edit[Side::right], names)));
}

}  // namespace dependency::comparisons
