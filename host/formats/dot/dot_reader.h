#pragma once
// Reads DOT.
#include <string_view>

#include "draft/graph_draft.h"
#include "input/input.h"

namespace depcompare {

/// Returns: whether the first word after comments is one that begins a graph.
[[nodiscard]] bool looksLikeDOT(std::string_view firstBytes);

/// Every node is a file, named by its label; attributes of drawing are ignored. If node IDs look
/// positional, the label is the preferred ID.
///
/// Throws: `InputError`; also for undirected edges.
[[nodiscard]] GraphDraft readDOT(Input& input);

}  // namespace depcompare
