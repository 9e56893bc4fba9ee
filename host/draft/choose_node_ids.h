#pragma once
// By which IDs the nodes of two files are known.
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "draft/graph_draft.h"

namespace depcompare {

/// Decides for both files together, since what is unique in one file only cannot tell nodes apart.
///
/// `rule` is one of
/// - `auto`: of each node the first candidate that no other node of either file could be known by,
///   else the file's own ID. A node with this text in the other file is the same one.
/// - `id`: the file's own ID.
/// - `name`, or else the key of a property: that text; a node without the property keeps its ID.
///
/// Throws: `InputError` for two nodes of one file with the same ID, an ID that holds U+0001, and a
///         key that no node has.
void chooseNodeIDs(std::array<GraphDraft, 2>& drafts, std::string_view rule);

/// Returns: whether IDs of this shape tell where a node stood in its file or in memory: a number
///          or an address behind the same word or behind nothing.
[[nodiscard]] bool lookPositional(std::span<const std::string_view> ids);

}  // namespace depcompare
