#pragma once
// Named loggers, each with its own severity threshold, and one sink for the records of all.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <foundation/export.h>

namespace foundation::log {

enum class Severity { trace, debug, info, warning, error, fatal };

/// The severity in lower case.
[[nodiscard]] FOUNDATION_EXPORT std::string_view name(Severity severity) noexcept;

/// What a sink receives.
struct Record {
    std::string name;
    Severity severity = Severity::info;
    std::string message;
    /// "file:line: signature" of each scope open on the writing thread, outermost first.
    std::vector<std::string> scopes;
};

using Sink = std::function<void(const Record&)>;

/// A handle to the logger of one name, as cheap to copy as a pointer.
///
/// Lifetime: valid until the process ends.
/// Threads:  every operation is safe from any thread.
class FOUNDATION_EXPORT Logger {
  public:
    /// The same name gives the same logger. Its threshold is `Severity::warning` until it is set.
    [[nodiscard]] static Logger get(std::string_view name);

    /// Lets records of `threshold` and above pass, in handles that exist already too.
    static void setThreshold(std::string_view name, Severity threshold);

    /// Sends the records of all loggers to `sink`, one at a time; an empty function means standard
    /// error, one line "severity name: message" per record, control characters as spaces.
    ///
    /// Returns: the previous sink, empty for standard error. It is no longer running, unless it
    ///          made this call itself.
    static Sink setSink(Sink sink);

    [[nodiscard]] const std::string& name() const noexcept;
    [[nodiscard]] bool enabled(Severity severity) const noexcept;

    /// Does nothing below the threshold. If the sink fails, the record is dropped: logging must not
    /// replace the error that it reports.
    void write(Severity severity, std::string_view message) const noexcept;

  private:
    struct Channel;
    struct Registry;

    explicit Logger(Channel& channel) noexcept : channel_(&channel) {}

    Channel* channel_;
};

}  // namespace foundation::log
