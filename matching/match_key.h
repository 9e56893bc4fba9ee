#pragma once
// What items pair by.
#include <string_view>

#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// Returns: a node's ID, a group's joined IDs, nothing for a graph; valid as long as the item stays
///          where it is.
[[nodiscard]] std::u16string_view matchKey(const Item& item);

}  // namespace dependency::comparisons
