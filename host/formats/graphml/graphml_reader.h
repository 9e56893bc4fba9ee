#pragma once
// Reads GraphML.
#include <string_view>

#include "draft/graph_draft.h"
#include "input/input.h"

namespace depcompare {

/// Returns: whether a file that begins like this is XML.
[[nodiscard]] bool looksLikeGraphML(std::string_view firstBytes);

/// Nested graphs are read flat, without their data; hyperedges and elements of other tools
/// are passed over, and so is data that holds elements. The file is read in pieces and never held
/// as a whole.
///
/// Throws: `InputError` for what is not XML, not GraphML, an undirected edge, an entity
/// declaration,
///         a key declared after its use, and what `GraphSink` refuses.
[[nodiscard]] GraphDraft readGraphML(Input& input);

}  // namespace depcompare
