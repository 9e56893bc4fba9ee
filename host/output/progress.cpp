#include "output/progress.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <system_error>
#include <utility>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/output.h"
#include "output/visible_text.h"

namespace depcompare {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds moment(600);
constexpr milliseconds interval(200);
constexpr std::size_t usualColumns = 80;

}  // namespace

Progress::Progress(When when)
    : onTerminal_(isTerminal(STDERR_FILENO)),
      shown_(when == When::always || (when == When::automatic && onTerminal_)) {
    if (shown_ && onTerminal_) {
        const milliseconds patience = when == When::always ? milliseconds(0) : moment;
        // Signals are for the main thread, which makes some of them wait.
        sigset_t all;
        sigset_t former;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_BLOCK, &all, &former);
        renewal_ =
            std::jthread([this, patience](const std::stop_token& stop) { renew(stop, patience); });
        ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
    }
}

Progress::~Progress() {
    renewal_ = {};
    clear();
}

void Progress::stage(std::string_view name) {
    const std::lock_guard lock(mutex_);
    stage_ = visible(fl::i18n::utf8_to_ustring(name));
    isNew_ = true;
    changed_.notify_one();
    if (shown_ && !onTerminal_) {
        write(fmt::format("depcompare: {}\n", fl::i18n::ustring_to_utf8(stage_)));
    }
}

void Progress::clear() {
    const std::lock_guard lock(mutex_);
    stage_.clear();
    if (std::exchange(isDrawn_, false)) {
        write("\r\x1b[K");
    }
}

void Progress::renew(const std::stop_token& stop, milliseconds patience) {
    const auto begin = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, stop, patience, [] { return false; });
    while (!stop.stop_requested()) {
        draw(std::chrono::steady_clock::now() - begin);
        changed_.wait_for(lock, stop, interval, [this] { return std::exchange(isNew_, false); });
    }
}

void Progress::draw(std::chrono::duration<double> elapsed) {
    if (stage_.empty()) {
        return;
    }
    const std::string time = fmt::format(" ({:.1f} s)", elapsed.count());
    // A line that wraps cannot be wiped, and one that is full may wrap.
    const std::size_t columns = terminalColumns(STDERR_FILENO).value_or(usualColumns) - 1;
    const auto name = shortened(stage_, columns - std::min(columns, time.size()));
    write(fmt::format("\r{}{}\x1b[K", fl::i18n::ustring_to_utf8(name), time));
    isDrawn_ = true;
}

void Progress::write(const std::string& text) const {
    try {
        writeAll(STDERR_FILENO, "standard error", text);
    } catch (const std::system_error&) {
        return;  // Losing the progress line must not fail the comparison.
    }
}

}  // namespace depcompare
