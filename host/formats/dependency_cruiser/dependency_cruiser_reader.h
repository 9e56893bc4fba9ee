#pragma once
// Reads the JSON that dependency-cruiser writes.
#include "draft/graph_draft.h"
#include "formats/json_shape.h"
#include "input/input.h"

namespace depcompare {

[[nodiscard]] bool looksLikeDependencyCruiser(const JsonShape& shape);

/// Modules are files, except those that belong to the run-time system (type `core`), could not be found
/// (`unresolved`) or were not visited (`npm`, `external`).
///
/// Throws: `InputError`.
[[nodiscard]] GraphDraft readDependencyCruiser(Input& input);

}  // namespace depcompare
