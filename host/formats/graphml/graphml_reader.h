#pragma once
// Reads GraphML.
#include <string_view>

#include "draft/graph_draft.h"
#include "input/input.h"

namespace depcompare {

/// Returns: whether a file that begins like this is XML.
[[nodiscard]] bool looksLikeGraphML(std::string_view firstBytes);

/// Nested graphs are read flat, without their data. Hyperedges, elements of other tools and data
/// that contain elements are ignored. The file is read in pieces, never kept as a whole.
///
/// Throws: `InputError` for a file that is not well-formed XML or not GraphML, an undirected edge,
///         a declaration of entities or attributes, a key declared after its use, and whatever `GraphSink` refuses.
[[nodiscard]] GraphDraft readGraphML(Input& input);

}  // namespace depcompare
