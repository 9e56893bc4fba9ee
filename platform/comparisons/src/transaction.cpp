#include <comparisons/viewmodel/transaction.h>

#include <boost/exception/diagnostic_information.hpp>

#include <foundation/log/logger.h>

namespace comparisons::viewmodel::utils::detail {

void logCurrentException() noexcept {
    try {
        foundation::log::Logger::get("comparisons::viewmodel::utils")
            .write(foundation::log::Severity::error,
                   "Exception caught: " + boost::current_exception_diagnostic_information());
    } catch (...) {
        // The exception on its way counts for more than its record.
    }
}

}  // namespace comparisons::viewmodel::utils::detail
