#pragma once
// One line on standard error that says what takes so long.
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "options.h"

namespace depcompare {

/// On a terminal the line is renewed in place and wiped at the end; automatically it appears there
/// only, and only after a moment. Elsewhere every stage is a line of its own.
class Progress {
  public:
    explicit Progress(When when);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void stage(const std::string& name);

  private:
    void renew(const std::stop_token& stop, std::chrono::milliseconds patience);
    void write(const std::string& text) const;

    bool onTerminal_;
    bool shown_;
    std::mutex mutex_;
    std::condition_variable_any stopped_;
    std::string stage_;
    std::jthread renewal_;
};

}  // namespace depcompare
