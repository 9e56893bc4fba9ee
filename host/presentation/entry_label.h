#pragma once
// What an entry is called in the report for people.
#include <string>

#include "presentation/presented_tree.h"

namespace depcompare {

struct EntryLabel {
    std::u16string text;
    std::u16string note;  ///< in parentheses behind the text, with the space between; may be empty
};

/// Returns: text that a terminal may get.
[[nodiscard]] EntryLabel labelOf(const PresentedTree& tree, PresentedTree::Match match);

}  // namespace depcompare
