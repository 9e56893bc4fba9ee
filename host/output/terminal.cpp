#include "output/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace depcompare {

std::optional<std::string_view> environment(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): never written.
    return value == nullptr ? std::nullopt : std::optional<std::string_view>(value);
}

bool isTerminal(int file) {
    return ::isatty(file) == 1;
}

std::optional<std::size_t> terminalColumns(int file) {
    winsize size{};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
    if (!isTerminal(file) || ::ioctl(file, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return std::nullopt;
    }
    return size.ws_col;
}

bool wantsColours(When when, bool terminal) {
    switch (when) {
        case When::always:
            return true;
        case When::never:
            return false;
        case When::automatic:
            break;
    }
    if (!environment("NO_COLOR").value_or("").empty()) {
        return false;
    }
    if (environment("CLICOLOR_FORCE").value_or("0") != "0") {
        return true;
    }
    const bool shown = terminal || environment("GIT_PAGER_IN_USE").has_value();
    return shown && environment("TERM") != "dumb";
}

}  // namespace depcompare
