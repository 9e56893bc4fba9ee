#pragma once
// Writes a graph as text for tools that compare lines.
#include <dependency/graph/graph.h>

#include "output/output.h"

namespace depcompare {

/// One line per property of the graph, node and dependency:
///
///     graph version=1.1
///     app.cc [file] lines=130
///     app.cc -> net.h [include] from=HAVE_SYNC
///
/// A display name that is not the ID precedes the type. Text that could be mistaken for something else
/// is quoted, with escapes.
///
/// Order: the graph's properties, then node by node, each before what it depends on; equal graphs
///        give equal texts.
void writeLines(const dependency::graph::Graph& graph, Output& output);

}  // namespace depcompare
