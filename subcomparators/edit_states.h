#pragma once
// How far the state of an edit may shorten its detail comparison.
#include <cstdint>

namespace dependency::comparisons {

/// Whether an edit whose state says that its sides are equal is believed: those of a comparison of
/// ours are, those that a caller made need not be.
enum class EditStates : std::uint8_t { unchecked, trusted };

}  // namespace dependency::comparisons
