#pragma once
// Shows a report one page at a time, in the program that the user has chosen for that.
#include <sys/types.h>

#include <array>
#include <csignal>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "output/output.h"

namespace depcompare {

/// Returns: DEPCOMPARE_PAGER, else PAGER, else `less` with options for reports; nothing if that is
///          empty or `cat`, or if the terminal is dumb.
[[nodiscard]] std::optional<std::string> pagerCommand();

/// While the pager runs, the keys that interrupt are the pager's.
class Pager final : public Sink {
  public:
    /// Thrown by `write` after the user has quit the pager: the rest need not be written.
    class Quit : public std::exception {};

    /// Runs the command in a shell.
    explicit Pager(const std::string& command);
    ~Pager() override { finish(); }

    void write(std::string_view text) override;
    /// Waits until the user has quit the pager.
    void finish() override;

    /// Returns: false if the shell did not find the command, and nothing was shown.
    ///
    /// Requires: finished.
    [[nodiscard]] bool wasFound() const noexcept { return wasFound_; }

  private:
    static constexpr std::array<int, 3> itsSignals{SIGINT, SIGQUIT, SIGPIPE};

    void spawn(const std::string& command, int input);

    pid_t process_ = -1;
    int input_ = -1;
    bool wasFound_ = true;
    std::array<struct sigaction, itsSignals.size()> former_{};
};

}  // namespace depcompare
