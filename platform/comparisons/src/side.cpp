#include <comparisons/side.h>

#include <foundation/core/diag/terminate.h>

namespace comparisons::detail {

void terminateOnInvalidSide(const boost::source_location& caller, const char* signature) noexcept {
    foundation::core::diag::terminate(caller, signature,
                                      "Cannot apply a three way side to `Product`.");
}

}  // namespace comparisons::detail
