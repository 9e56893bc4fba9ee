#pragma once
// What is said about a file before its graph is built: which nodes are files, and what looks odd.
#include <string>
#include <vector>

#include "draft/graph_draft.h"

namespace depcompare {

/// Makes files of the nodes with one of these types, which they keep as their property `type`.
void applyFileTypes(GraphDraft& draft, const std::vector<std::string>& fileTypes);

/// Adds a warning for a graph of nodes without a file, and one for node IDs that look positional.
///
/// Requires: file types and node IDs are final.
void addWarnings(GraphDraft& draft);

}  // namespace depcompare
