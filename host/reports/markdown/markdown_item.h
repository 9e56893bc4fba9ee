#pragma once
// An entry as an item of a list in Markdown.
#include <string>

#include "presentation/presented_tree.h"

namespace depcompare {

/// Returns: a line for an entry of one side only, a group's with its dependency types; for others
///          the visible rows that differ below it.
[[nodiscard]] std::string markdownItem(const PresentedTree& tree,
                                       const PresentedTree::Entry& entry);

}  // namespace depcompare
