#include "formats/graphml/graphml_keys.h"

#include <utility>

#include "formats/edge_data.h"

namespace depcompare {

namespace {

using Meaning = GraphMLKey::Meaning;

constexpr std::pair<std::string_view, GraphMLCarrier> carriers[] = {
    {"graph", GraphMLCarrier::graph},
    {"node", GraphMLCarrier::node},
    {"edge", GraphMLCarrier::edge},
};

GraphMLKey edgeKey(std::string_view name) {
    GraphMLKey key;
    for (const auto& [text, column] : edgeData) {
        if (name == text) {
            key.meaning = Meaning::edgeColumn;
            key.column = column;
        }
    }
    return key;
}

}  // namespace

GraphMLKey graphMLKey(GraphMLCarrier carrier, std::string_view name) {
    GraphMLKey key;
    key.property = name;
    switch (carrier) {
        case GraphMLCarrier::graph:
            key.meaning = Meaning::graphProperty;
            break;
        case GraphMLCarrier::node:
            key.meaning = name == "name"   ? Meaning::nodeName
                          : name == "type" ? Meaning::nodeType
                                           : Meaning::nodeProperty;
            break;
        case GraphMLCarrier::edge:
            return edgeKey(name);
    }
    return key;
}

std::vector<GraphMLCarrier> graphMLCarriers(const std::optional<std::string_view>& value) {
    std::vector<GraphMLCarrier> named;
    for (const auto& [name, carrier] : carriers) {
        if (!value || *value == "all" || *value == name) {
            named.push_back(carrier);
        }
    }
    return named;
}

bool GraphMLKeys::declare(GraphMLCarrier carrier, std::string_view id, const GraphMLKey& key) {
    return keys_[static_cast<std::size_t>(carrier)].emplace(id, key).second;
}

const GraphMLKey& GraphMLKeys::find(GraphMLCarrier carrier, std::string_view id) {
    auto& keys = keys_[static_cast<std::size_t>(carrier)];
    const auto found = keys.find(id);
    return found != keys.end() ? found->second
                               : keys.emplace(id, graphMLKey(carrier, id)).first->second;
}

}  // namespace depcompare
