#pragma once
// A generated side as a graph in memory and as a GraphML file; reading the file gives the graph.
#include <cstddef>
#include <memory>
#include <ostream>

#include <dependency/graph/graph.h>

#include "generator.h"

namespace depcompare::bench {

/// Returns: the left (0) or right (1) graph. The IDs of its dependencies are their ranks in content
///          order, in digits of one width, at most 7.
[[nodiscard]] std::shared_ptr<const dependency::graph::Graph> makeGraph(const GeneratedPair& pair,
                                                                        std::size_t side);

/// Writes the left (0) or right (1) graph; edges have no IDs.
void writeGraphML(const GeneratedPair& pair, std::size_t side, std::ostream& out);

}  // namespace depcompare::bench
