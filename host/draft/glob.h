#pragma once
// Patterns of the shell: * ? [a-z]
#include <string>
#include <vector>

namespace depcompare {

/// Returns: whether the whole text matches; `*` also matches `/`.
[[nodiscard]] bool matchesGlob(const std::string& glob, const std::string& text);

[[nodiscard]] bool matchesAnyGlob(const std::vector<std::string>& globs, const std::string& text);

}  // namespace depcompare
