#pragma once
// What people have that is not read, and how to get a form of it that is.
#include <string>
#include <string_view>

namespace depcompare {

/// Returns: what a content, or the file's name, looks like and what to do, for a message; empty if it
///          is none of the forms that are known.
[[nodiscard]] std::string adviceForUnread(std::string_view firstBytes, std::string_view fileName);

}  // namespace depcompare
