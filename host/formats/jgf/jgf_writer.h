#pragma once
// Writes a graph in the JSON Graph Format, version 2.
#include <dependency/graph/graph.h>

#include "output/output.h"

namespace depcompare {

/// Writes the whole graph: reading it again gives the same graph.
///
/// Order: nodes and edges as in the graph; equal graphs give equal texts.
void writeJGF(const dependency::graph::Graph& graph, Output& output);

}  // namespace depcompare
