#pragma once
// What groups of parallel dependencies are ordered by.
#include <string>

#include <dependency/graph/node.h>

namespace dependency::comparisons {

/// Order: by type ID, then by lower-cased name, both by code unit.
struct SortKey {
    std::u16string typeID;
    std::u16string name;  ///< lower-cased under the global locale

    friend auto operator<=>(const SortKey&, const SortKey&) = default;
};

[[nodiscard]] SortKey sortKeyOf(const graph::Node& downstream);

}  // namespace dependency::comparisons
