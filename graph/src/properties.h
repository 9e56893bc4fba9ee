#pragma once
// The properties of graphs and of nodes, which keep their order and are found by their keys.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/locale/encoding_utf.hpp>

#include <dependency/graph/node.h>

namespace dependency::graph {

/// So many properties are searched one by one.
inline constexpr std::size_t fewProperties = 16;

/// The positions of properties in ascending order of keys; empty if the properties are in that order.
using KeyOrder = std::vector<std::uint32_t>;

inline KeyOrder keyOrderOf(const std::vector<Property>& properties) {
    KeyOrder order;
    const auto unordered =
        std::ranges::adjacent_find(properties, std::greater_equal<>(), &Property::first);
    if (unordered != properties.end()) {
        order.resize(properties.size());
        std::iota(order.begin(), order.end(), 0U);
        std::ranges::sort(order, {}, [&](std::uint32_t position) -> const std::u16string& {
            return properties[position].first;
        });
    }
    return order;
}

inline std::vector<std::u16string> keysOf(const std::vector<Property>& properties) {
    std::vector<std::u16string> keys;
    keys.reserve(properties.size());
    for (const auto& property : properties) {
        keys.push_back(property.first);
    }
    return keys;
}

/// Requires: `order` is that of `properties`, unless these are few.
inline const std::u16string& valueOf(const std::vector<Property>& properties, const KeyOrder& order,
                                     const std::u16string& key) {
    auto found = properties.end();
    if (properties.size() <= fewProperties) {
        found = std::ranges::find(properties, key, &Property::first);
    } else if (order.empty()) {
        found = std::ranges::lower_bound(properties, key, {}, &Property::first);
    } else {
        const auto position = std::ranges::lower_bound(
            order, key, {},
            [&](std::uint32_t at) -> const std::u16string& { return properties[at].first; });
        found = position == order.end() ? found : properties.begin() + *position;
    }
    if (found == properties.end() || found->first != key) {
        throw std::out_of_range("no property \"" + boost::locale::conv::utf_to_utf<char>(key) +
                                "\"");
    }
    return found->second;
}

}  // namespace dependency::graph
