#pragma once
// Node IDs in a graph and node IDs as files write them.
//
// In a graph every ID begins with a character that no ID of a file may contain. Two joined IDs can
// then be separated in one way only, so no two groups of dependencies share a key, and the order of
// IDs is that of the file's.
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "input/input_error.h"

namespace depcompare {

inline constexpr char idMark = '\u0001';

/// Returns: whether a file's ID, in UTF-8, contains the mark.
[[nodiscard]] inline bool holdsMark(std::string_view id) {
    return id.find(idMark) != std::string_view::npos;
}

/// Returns: the message for a file's ID that contains the mark.
[[nodiscard]] inline std::string markProblem(std::string_view id) {
    return fmt::format("node ID {} contains the character U+{:04X}", inQuotes(id),
                       static_cast<unsigned>(idMark));
}

/// Returns: the ID as the file wrote it; valid as long as the text that `id` views.
[[nodiscard]] inline std::u16string_view idAsRead(std::u16string_view id) {
    return id.starts_with(char16_t{idMark}) ? id.substr(1) : id;
}

[[nodiscard]] inline std::u16string markedID(std::u16string_view id) {
    return std::u16string(1, char16_t{idMark}).append(id);
}

}  // namespace depcompare
