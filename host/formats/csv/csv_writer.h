#pragma once
// Writes the dependencies of a graph as a table.
#include <dependency/graph/graph.h>

#include "output/output.h"

namespace depcompare {

/// Writes rows of source, target, type and the components of both ends, after a header, as RFC 4180
/// has them; nodes without a dependency, and nodes that are not files, are rows without a target.
/// Names and properties are not written.
///
/// Order: as in the graph; equal graphs give equal texts.
void writeCSV(const dependency::graph::Graph& graph, Output& output);

}  // namespace depcompare
