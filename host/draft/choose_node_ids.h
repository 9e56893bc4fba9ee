#pragma once
// Chooses the IDs by which nodes are matched.
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "draft/graph_draft.h"

namespace depcompare {

/// Decides for both files together, since an ID must be unique in both to identify a node.
///
/// `rule` is one of
/// - `auto`: a node's first candidate that is neither candidate nor ID of another node in either
///   file, else the file's own ID. A node with this text in the other file is the same one.
/// - `id`: the file's own ID.
/// - `name`, or else the key of a property: that text; a node without the property keeps its ID.
///
/// Throws: `InputError` for two nodes of one file with the same ID, an ID that contains the mark of
///         IDs, and a key that no node has.
void chooseNodeIDs(std::array<GraphDraft, 2>& drafts, std::string_view rule);

/// Returns: whether the IDs look like positions in a file or in memory: numbers or addresses, all
///          after the same word or after none.
[[nodiscard]] bool lookPositional(std::span<const std::string_view> ids);

}  // namespace depcompare
