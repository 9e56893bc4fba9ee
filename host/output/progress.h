#pragma once
// One line on standard error that names the current stage.
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "output/terminal.h"

namespace depcompare {

/// On a terminal the line is renewed in place, no wider than the terminal, and wiped at the end.
/// Elsewhere every stage is a line of its own. `When::automatic` shows it on a terminal only, after
/// a moment.
///
/// Threads: any thread may call `stage` and `clear`.
class Progress {
  public:
    explicit Progress(When when);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void stage(std::string_view name);
    /// Wipes the line until the next stage, so that the terminal can show something else.
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
    bool isNew_ = false;    // the drawing thread has not seen the stage
    bool isDrawn_ = false;
    std::jthread renewal_;
};

}  // namespace depcompare
