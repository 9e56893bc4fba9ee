#pragma once
// This library's own labels.
#include <string>
#include <string_view>

namespace dependency::comparisons {

/// Returns: the message `key` of the catalog "ORBITA:dependency:comparisons" in the global locale.
/// Throws:  what the catalog throws for a missing one.
[[nodiscard]] std::u16string label(std::string_view key);

}  // namespace dependency::comparisons
