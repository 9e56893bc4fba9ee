#pragma once
// What is known about the terminal, and what the environment says about it.
#include <cstddef>
#include <optional>

#include "options.h"

namespace depcompare {

[[nodiscard]] bool isTerminal(int file);

/// Returns: how many columns the terminal has; nothing where `file` is none or does not say.
[[nodiscard]] std::optional<std::size_t> terminalColumns(int file);

/// Automatically there are colours on a terminal, unless NO_COLOR or a dumb terminal forbids them.
[[nodiscard]] bool wantsColours(When when, bool terminal);

}  // namespace depcompare
