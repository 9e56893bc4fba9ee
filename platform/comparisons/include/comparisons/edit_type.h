#pragma once
// What an edit shows: an addition, a removal, a change or nothing.
#include <cstdint>
#include <optional>

#include <comparisons/export.h>
#include <comparisons/stateful_edit.h>

namespace comparisons {

/// Tables store these numbers.
enum class EditType : std::uint32_t { rightOnly = 0, leftOnly = 1, changed = 2, unchanged = 3 };

/// Returns: by presence of the sides; with both present or both absent, by the state.
[[nodiscard]] COMPARISONS_EXPORT EditType editType(bool left, bool right, bool changed) noexcept;

template <class T>
[[nodiscard]] EditType editType(const StatefulEdit<std::optional<T>, 2>& edit) noexcept {
    return editType(edit[Side::left].has_value(), edit[Side::right].has_value(), edit.isChanged());
}

}  // namespace comparisons
