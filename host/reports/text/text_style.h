#pragma once
// What the text report may use of a terminal.
#include <cstddef>
#include <optional>
#include <string_view>

#include <comparisons/edit_type.h>

namespace depcompare {

struct TextStyle {
    bool colours = false;
    std::optional<std::size_t> columns;  ///< of the terminal; without them long texts are not
                                         ///< shortened, only broken into lines

    /// Returns: the width to lay out for.
    [[nodiscard]] std::size_t width() const { return columns.value_or(80); }
};

inline constexpr std::string_view boldColour = "\x1b[1m";
inline constexpr std::string_view faintColour = "\x1b[2m";
inline constexpr std::string_view endOfColour = "\x1b[0m";

[[nodiscard]] constexpr std::string_view colourOf(::comparisons::EditType type) {
    switch (type) {
        case ::comparisons::EditType::rightOnly:
            return "\x1b[32m";
        case ::comparisons::EditType::leftOnly:
            return "\x1b[31m";
        case ::comparisons::EditType::changed:
            return "\x1b[33m";
        case ::comparisons::EditType::unchanged:
            break;
    }
    return faintColour;
}

}  // namespace depcompare
