#pragma once
// The properties of graphs and of nodes.
#include <algorithm>
#include <stdexcept>

#include <boost/locale/encoding_utf.hpp>

#include <dependency/graph/node.h>

namespace dependency::graph {

inline std::vector<std::u16string> keysOf(const std::vector<Property>& properties) {
    std::vector<std::u16string> keys;
    keys.reserve(properties.size());
    for (const auto& property : properties) {
        keys.push_back(property.first);
    }
    return keys;
}

inline const std::u16string& valueOf(const std::vector<Property>& properties,
                                     const std::u16string& key) {
    const auto found = std::ranges::find(properties, key, &Property::first);
    if (found == properties.end()) {
        throw std::out_of_range("no property \"" + boost::locale::conv::utf_to_utf<char>(key) +
                                "\"");
    }
    return found->second;
}

}  // namespace dependency::graph
