#pragma once
// Lines of trees that are drawn with characters, as build tools print them.
#include <cstddef>
#include <string_view>

namespace depcompare {

struct TreeLine {
    std::size_t depth = 0;  ///< 1 for a child of the root; 0 for a line without a branch
    std::string_view text;  ///< after the branch
};

/// Takes apart a line such as `|  \- text`, if every level is `columns` wide.
[[nodiscard]] inline TreeLine treeLine(std::string_view line, std::size_t columns) {
    std::size_t depth = 0;
    for (std::string_view rest = line; rest.size() >= columns; rest.remove_prefix(columns)) {
        const bool isBlank = rest.substr(1, columns - 1).find_first_not_of(' ') == rest.npos;
        const std::string_view branch = rest.substr(1, columns - 1);
        ++depth;
        if ((rest[0] == '+' || rest[0] == '\\') && branch.back() == ' ' &&
            branch.find_first_not_of('-') == branch.size() - 1) {
            return {.depth = depth, .text = rest.substr(columns)};
        }
        if ((rest[0] != '|' && rest[0] != ' ') || !isBlank) {
            break;
        }
    }
    return {.depth = 0, .text = line};
}

}  // namespace depcompare
