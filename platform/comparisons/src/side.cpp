#include <comparisons/side.h>

#include <foundation/core/diag/terminate.h>

namespace comparisons::detail {

void terminateOnInvalidSide(const char* signature) noexcept {
    foundation::core::diag::terminate(BOOST_CURRENT_LOCATION, signature,
                                      "Cannot apply a three way side to `Product`.");
}

}  // namespace comparisons::detail
