#pragma once
// How text looks: signs, colours and the room there is.
#include <cstddef>
#include <optional>
#include <string_view>

#include <comparisons/edit_type.h>

namespace depcompare {

struct TextStyle {
    bool colours = false;
    std::optional<std::size_t> columns;  ///< of the terminal; none: nothing is shortened, only
                                         ///< broken into lines
};

inline constexpr std::size_t columnsWithoutTerminal = 80;

struct Look {
    char sign;
    std::string_view colour;
};

[[nodiscard]] constexpr Look lookOf(::comparisons::EditType type) {
    using ::comparisons::EditType;
    switch (type) {
        case EditType::rightOnly:
            return {'+', "\x1b[32m"};
        case EditType::leftOnly:
            return {'-', "\x1b[31m"};
        case EditType::changed:
            return {'~', "\x1b[33m"};
        case EditType::unchanged:
            break;
    }
    return {'=', "\x1b[2m"};
}

inline constexpr std::string_view boldColour = "\x1b[1m";
inline constexpr std::string_view faintColour = "\x1b[2m";
inline constexpr std::string_view endOfColour = "\x1b[0m";

}  // namespace depcompare
