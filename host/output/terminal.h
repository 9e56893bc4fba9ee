#pragma once
// What is known about the terminal, and what the environment says about it.
#include <cstddef>
#include <optional>
#include <string_view>

#include "cli/options.h"

namespace depcompare {

/// Returns: the variable's value; nothing where it is not set.
[[nodiscard]] std::optional<std::string_view> environment(const char* name);

[[nodiscard]] bool isTerminal(int file);

/// Returns: how many columns the terminal has; nothing where `file` is none or does not say.
[[nodiscard]] std::optional<std::size_t> terminalColumns(int file);

/// Automatically there are colours on a terminal and in git's pager, unless the terminal is dumb.
/// NO_COLOR forbids them before CLICOLOR_FORCE demands them.
[[nodiscard]] bool wantsColours(When when, bool terminal);

}  // namespace depcompare
