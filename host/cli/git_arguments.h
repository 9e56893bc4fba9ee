#pragma once
// What git adds to the command of a diff tool or of a diff driver.
#include <array>
#include <optional>
#include <span>
#include <string>

namespace depcompare {

/// The old and the new file, and what people call them.
struct GitArguments {
    std::array<std::string, 2> paths;
    std::array<std::string, 2> names;
    bool driver = false;  ///< whether git shows the output among its own
};

/// Understands the two files of a diff tool; a driver's path, file, object and mode of both sides,
/// with a renamed file's new path and how it was renamed behind them; and a lone path.
///
/// Returns: nothing for the lone path, which is in conflict, so that there are no two files.
/// Throws:  `UsageError` for any other number of words.
[[nodiscard]] std::optional<GitArguments> gitArguments(std::span<const char* const> words);

}  // namespace depcompare
