#pragma once
// The kinds of items, to switch over.
#include <cstdint>

#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// The alternatives of an item, in their order.
enum class ItemKind : std::uint8_t { graph, node, group };

/// Requires: not valueless.
[[nodiscard]] inline ItemKind kindOf(const Item& item) noexcept {
    return static_cast<ItemKind>(item.index());
}

}  // namespace dependency::comparisons
