#pragma once
// What is known about the terminal, and what the environment says about it.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace depcompare {

/// Of something that a terminal shows; `automatic` leaves it to the terminal.
enum class When : std::uint8_t { automatic, always, never };

/// Returns: the variable's value; nothing if it is not set.
[[nodiscard]] std::optional<std::string_view> environment(const char* name);

[[nodiscard]] bool isTerminal(int file);

/// Returns: how many columns the terminal has; nothing if `file` is not a terminal or its width is
///          unknown.
[[nodiscard]] std::optional<std::size_t> terminalColumns(int file);

/// Automatically there are colours on a terminal and in git's pager, unless the terminal is dumb.
/// NO_COLOR forbids them before CLICOLOR_FORCE demands them.
[[nodiscard]] bool wantsColours(When when, bool terminal);

}  // namespace depcompare
