#pragma once
// The texts of generated files: a function of a file's number, so that nothing needs to be stored.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace depcompare::bench {

inline constexpr std::array<std::string_view, 3> dependencyTypes{"call", "include", "inherit"};

/// In ascending order.
inline constexpr std::array<std::string_view, 6> propertyKeys{"checksum", "language", "lines",
                                                              "module",   "owner",    "size"};

/// Returns: a path of 40 to 60 ASCII characters, another one for every file.
[[nodiscard]] std::string fileID(std::uint32_t file);

/// Returns: the last part of the path `id`.
[[nodiscard]] std::string fileName(std::string_view id);

/// Returns: up to 25 characters, empty for component 0; two components of one file never have the
///          same name, and their names order as their numbers do.
/// Requires: component < 26.
[[nodiscard]] std::string componentName(std::uint32_t file, std::uint8_t component);

/// Returns: the ID of the component's type, empty for component 0.
[[nodiscard]] std::string_view componentType(std::uint8_t component);

/// Returns: the value for `propertyKeys[property]`; `changed` makes another one of it.
[[nodiscard]] std::string propertyValue(std::uint32_t file, std::size_t property, bool changed);

}  // namespace depcompare::bench
