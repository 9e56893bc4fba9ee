#pragma once
// Marks a thread's position in the log records that it writes.
#include <string>
#include <string_view>
#include <vector>

#include <boost/assert/source_location.hpp>

#include <foundation/export.h>

namespace foundation::log {

/// Open from construction to destruction, on the constructing thread only.
///
/// Requires: destroyed on its thread, the last opened first; `signature` outlives it.
class FOUNDATION_EXPORT Scope {
  public:
    Scope(const boost::source_location& location, std::string_view signature) noexcept;
    ~Scope();

    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    /// Returns: "file:line: signature" of each scope open on this thread.
    /// Order:   outermost first.
    [[nodiscard]] static std::vector<std::string> texts();

  private:
    boost::source_location location_;
    std::string_view signature_;
    const Scope* outer_;
};

}  // namespace foundation::log
