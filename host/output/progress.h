#pragma once
// One line on standard error that says what takes so long.
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "cli/options.h"

namespace depcompare {

/// On a terminal the line is renewed in place, no wider than the terminal, and wiped at the end;
/// automatically it appears there only, and only after a moment. Elsewhere every stage is a line of
/// its own.
///
/// Threads: `stage` and `clear` may be called by any.
class Progress {
  public:
    explicit Progress(When when);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void stage(std::string_view name);
    /// Takes the line away until the next stage, for whatever else the terminal is to show.
    void clear();

  private:
    void renew(const std::stop_token& stop, std::chrono::milliseconds patience);
    void draw(std::chrono::duration<double> elapsed);
    void write(const std::string& text) const;

    bool onTerminal_;
    bool shown_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::u16string stage_;  // empty: no line
    bool isNew_ = false;    // the stage, to the thread that draws
    bool isDrawn_ = false;
    std::jthread renewal_;
};

}  // namespace depcompare
