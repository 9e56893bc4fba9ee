#pragma once
// Shows a report a page at a time, by the program that the user has chosen for that.
#include <functional>
#include <optional>
#include <string>

#include "output/output.h"

namespace depcompare {

/// Returns: DEPCOMPARE_PAGER, else PAGER, else `less` as it suits reports; nothing where that is
///          empty or `cat`, or the terminal is too plain for a pager.
[[nodiscard]] std::optional<std::string> pagerCommand();

/// Gives what `write` writes to the command, and waits for its end. Who leaves it early has seen
/// enough: that is no error, and the rest is not written.
///
/// Returns: false where there is no such command; nothing was shown then.
/// Throws:  what `write` throws, and `std::system_error`.
[[nodiscard]] bool showInPager(const std::string& command,
                               const std::function<void(Output&)>& write);

}  // namespace depcompare
