#pragma once
// What becomes of version numbers.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "presentation/presented_tree.h"

namespace depcompare {

enum class VersionChange : std::uint8_t { up, down, other };

/// Versions are ordered as Semantic Versioning 2.0 has it, a `v` before them left aside; numbers with
/// points between them and nothing else also if there are not three, a missing one being 0.
///
/// Returns: `other` unless both versions have this form and differ in this order.
[[nodiscard]] VersionChange versionChange(std::u16string_view before, std::u16string_view after);

/// How many telling properties changed, by what became of their values as versions.
struct VersionCounts {
    std::size_t up = 0;
    std::size_t down = 0;
    std::size_t other = 0;
};

[[nodiscard]] VersionCounts countVersions(const PresentedTree& tree);

}  // namespace depcompare
