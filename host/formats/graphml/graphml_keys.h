#pragma once
// The keys of a GraphML file: the meaning of data, by the element that has them.
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "draft/graph_draft.h"

namespace depcompare {

/// The elements whose data count.
enum class GraphMLCarrier : std::uint8_t { graph, node, edge };

struct GraphMLKey {
    enum class Meaning : std::uint8_t {
        ignored,
        graphProperty,
        nodeProperty,
        nodeName,
        nodeType,
        nodeLabel,  ///< yEd's graphics of a node
        edgeColumn,
        edgeLabel,  ///< yEd's graphics of an edge
    };

    Meaning meaning = Meaning::ignored;
    std::string property;                  ///< the name of a property
    EdgeColumn column = EdgeColumn::type;  ///< for `edgeColumn`
};

/// Returns: the meaning of data with this name for this carrier.
[[nodiscard]] GraphMLKey graphMLKey(GraphMLCarrier carrier, std::string_view name);

/// Returns: the carriers that a key's attribute `for` names; all if there is none.
[[nodiscard]] std::vector<GraphMLCarrier> graphMLCarriers(
    const std::optional<std::string_view>& value);

/// Keys by carrier and ID, since some writers give a node key and an edge key the same ID.
class GraphMLKeys {
  public:
    /// Returns: false if the carrier's key was declared, or looked up, before.
    [[nodiscard]] bool declare(GraphMLCarrier carrier, std::string_view id, const GraphMLKey& key);

    /// Returns: the key; if it was not declared, one named by its ID. Valid as long as this object.
    [[nodiscard]] const GraphMLKey& find(GraphMLCarrier carrier, std::string_view id);

  private:
    std::array<std::map<std::string, GraphMLKey, std::less<>>, 3> keys_;  // by carrier
};

}  // namespace depcompare
