#pragma once
// How far the state of an edit may shorten its detail comparison.
#include <cstdint>

namespace dependency::comparisons {

/// Whether `!isChanged()` of an edit with both sides may be trusted to mean that its sides are
/// equal: true of edits that our matching made, unknown of a caller's.
enum class EditStates : std::uint8_t { unchecked, trusted };

}  // namespace dependency::comparisons
