#pragma once
// Reads the bills of materials of CycloneDX, in JSON and in XML.
#include <string_view>

#include "draft/graph_draft.h"
#include "formats/json_shape.h"
#include "input/input.h"

namespace depcompare {

[[nodiscard]] bool looksLikeCycloneDX(const JsonShape& shape);
[[nodiscard]] bool looksLikeCycloneDXXml(std::string_view firstBytes);

/// Every component is a file, including nested ones and the one that the document describes; services
/// are nodes of the type `service`.
///
/// Throws: `InputError`.
[[nodiscard]] GraphDraft readCycloneDX(Input& input);

}  // namespace depcompare
