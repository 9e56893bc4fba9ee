#include <foundation/core/diag/terminate.h>

#include <cstdio>
#include <cstdlib>

namespace foundation::core::diag {

void terminate(const boost::source_location& location, std::string_view signature,
               std::string_view message) noexcept {
    std::fprintf(stderr, "%s:%u: %.*s: %.*s\n", location.file_name(),
                 static_cast<unsigned>(location.line()), static_cast<int>(signature.size()),
                 signature.data(), static_cast<int>(message.size()), message.data());
    std::abort();
}

}  // namespace foundation::core::diag
