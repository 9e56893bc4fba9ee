#include <comparisons/viewmodel/transaction.h>

#include <boost/exception/diagnostic_information.hpp>

#include <foundation/log/logger.h>

namespace comparisons::viewmodel::utils::detail {

void logCurrentException() {
    foundation::log::Logger::get("comparisons::viewmodel::utils")
        .write(foundation::log::Severity::error,
               "Exception caught: " + boost::current_exception_diagnostic_information());
}

}  // namespace comparisons::viewmodel::utils::detail
