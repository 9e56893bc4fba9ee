#pragma once
// Node IDs in a graph and node IDs as files write them.
//
// In a graph every ID begins with a character that no ID of a file may contain. Two IDs joined can
// then be taken apart in one way only, so no two groups of dependencies share a key, and the order
// of IDs is that of the file's.
#include <string>
#include <string_view>

namespace depcompare {

inline constexpr char16_t nodeIDMark = u'\u0001';

/// Returns: the ID as the file wrote it; valid as long as the text that `id` views.
[[nodiscard]] inline std::u16string_view idAsRead(std::u16string_view id) {
    return id.starts_with(nodeIDMark) ? id.substr(1) : id;
}

[[nodiscard]] inline std::u16string markedID(std::u16string_view idAsRead) {
    std::u16string id(1, nodeIDMark);
    return id.append(idAsRead);
}

}  // namespace depcompare
