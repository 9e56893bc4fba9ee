#pragma once
// Why one node needs another: a shortest path on either side.
#include <array>
#include <string>
#include <vector>

#include "output/output.h"
#include "presentation/insights.h"
#include "reports/text/text_style.h"

namespace depcompare {

struct Why {
    insight::LinkGraph graph;
    insight::BySide<std::vector<insight::Number>> paths;  ///< both ends included; empty if none
    bool differs = false;  ///< whether a path has a link that the other side lacks
};

/// `ends` are IDs, or endings of which each is that of one node only.
///
/// Throws: `std::runtime_error` for an end that no node or several nodes have.
[[nodiscard]] Why findWhy(const LoadedPair& inputs, const InsightOptions& options,
                          const std::array<std::string, 2>& ends);

/// Writes a line per node, with + or - before a link that the other side lacks.
void writeWhy(const Why& why, const std::array<std::string, 2>& names, const TextStyle& style,
              Output& output);

}  // namespace depcompare
