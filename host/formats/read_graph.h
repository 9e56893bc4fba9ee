#pragma once
// Chooses the reader for an input.
#include <string>
#include <string_view>
#include <vector>

#include "draft/graph_draft.h"
#include "input/input.h"

namespace depcompare {

/// Returns: the names of the formats that can be asked for, without `auto`.
[[nodiscard]] std::vector<std::string> inputFormats();

/// Returns: what each format is, for people, in lines that end in a line break.
[[nodiscard]] std::string describedFormats();

/// `format` is one of `inputFormats()`, or `auto`, as below.
///
/// Requires: an input of which nothing was read yet.
/// Returns:  the keys of properties whose change is news, though not structural, to the format.
/// Throws:   `InputError`.
[[nodiscard]] std::vector<std::string> tellingKeysOf(Input& input, std::string_view format);

/// `format` is one of `inputFormats()`, or `auto`: by the content, then by the file's name.
///
/// Throws: `InputError`.
[[nodiscard]] GraphDraft readGraph(Input& input, std::string_view format = "auto");

}  // namespace depcompare
