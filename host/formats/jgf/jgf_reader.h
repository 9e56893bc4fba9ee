#pragma once
// Reads the JSON Graph Format, versions 1 and 2.
#include "draft/graph_draft.h"
#include "formats/json_shape.h"
#include "input/input.h"

namespace depcompare {

[[nodiscard]] bool looksLikeJGF(const JsonShape& shape);

/// A node's `metadata` contain its type and, as other members or under `properties`, its properties;
/// an edge's `relation` is its type, and its `metadata` contain its components.
///
/// Throws: `InputError`; also for several graphs in one file and undirected edges.
[[nodiscard]] GraphDraft readJGF(Input& input);

}  // namespace depcompare
