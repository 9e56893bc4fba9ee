#pragma once
// The end of the process when an internal invariant is broken.
#include <string_view>

#include <boost/assert/source_location.hpp>

#include <foundation/export.h>

namespace foundation::core::diag {

/// Writes "file:line: signature: message" as one line to standard error and aborts. A check names
/// the place of its caller: that is where the invariant is broken.
///
/// Threads: any; allocates nothing.
[[noreturn]] FOUNDATION_EXPORT void terminate(const boost::source_location& location,
                                              std::string_view signature,
                                              std::string_view message) noexcept;

}  // namespace foundation::core::diag
