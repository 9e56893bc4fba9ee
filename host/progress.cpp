#include "progress.h"

#include <unistd.h>

#include <system_error>

#include <fmt/format.h>

#include "output.h"
#include "reports/visible_text.h"
#include "terminal.h"

namespace depcompare {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds moment(600);
constexpr milliseconds interval(200);

}  // namespace

Progress::Progress(When when)
    : onTerminal_(isTerminal(STDERR_FILENO)),
      shown_(when == When::always || (when == When::automatic && onTerminal_)) {
    if (shown_ && onTerminal_) {
        const milliseconds patience = when == When::always ? milliseconds(0) : moment;
        renewal_ =
            std::jthread([this, patience](const std::stop_token& stop) { renew(stop, patience); });
    }
}

Progress::~Progress() = default;

void Progress::stage(const std::string& name) {
    const std::lock_guard lock(mutex_);
    stage_ = visible(name);
    if (shown_ && !onTerminal_) {
        write(fmt::format("depcompare: {}\n", stage_));
    }
}

void Progress::renew(const std::stop_token& stop, milliseconds patience) {
    const auto begin = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    const auto never = [] { return false; };
    stopped_.wait_for(lock, stop, patience, never);
    if (stop.stop_requested()) {
        return;
    }
    while (!stop.stop_requested()) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
        write(fmt::format("\r{} ({:.1f} s)\x1b[K", stage_, elapsed.count()));
        stopped_.wait_for(lock, stop, interval, never);
    }
    write("\r\x1b[K");
}

void Progress::write(const std::string& text) const {
    try {
        writeAll(STDERR_FILENO, "standard error", text);
    } catch (const std::system_error&) {
        return;  // A comparison must not fail for want of somebody who watches it.
    }
}

}  // namespace depcompare
