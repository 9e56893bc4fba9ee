#pragma once
// Cases of tests that are files of text.
#include <filesystem>
#include <string>
#include <vector>

namespace depcompare::test {

/// A line "=== ABOUT", then perhaps lines of options, which begin with "--", then the parts, with a
/// line "---" between one and the next. The last part is what is expected.
struct TextCase {
    std::string about;
    std::string options;
    std::vector<std::string> parts;  ///< without their last line break
};

/// Returns: the cases of all files of the folder.
[[nodiscard]] std::vector<TextCase> casesIn(const std::filesystem::path& folder);

/// Expects a case to have this result. A line "..." of what is expected stands for any lines.
void expectResult(const TextCase& example, const std::string& result);

}  // namespace depcompare::test
