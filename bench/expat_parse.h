#pragma once
// The floor for reading: a parse of the file that keeps nothing.
#include <cstddef>
#include <filesystem>

namespace depcompare::bench {

/// Returns: the number of elements.
/// Throws:  `std::runtime_error` for a file that cannot be read or is not XML.
[[nodiscard]] std::size_t parseWithExpat(const std::filesystem::path& file);

}  // namespace depcompare::bench
