#pragma once
// Atomic changes of an object model, logged if they fail.
#include <utility>

#include <boost/assert/source_location.hpp>
#include <boost/current_function.hpp>

#include <comparisons/export.h>
#include <foundation/log/scope.h>
#include <tessel/core/model.h>
#include <tessel/core/transaction.h>

namespace comparisons::viewmodel::utils {

namespace detail {
/// Requires: called while an exception is handled.
COMPARISONS_EXPORT void logCurrentException() noexcept;
}  // namespace detail

/// Runs `callable` inside one transaction of `model` and commits it.
///
/// Returns: what `callable` returns.
/// Throws:  what `callable` or the model throws, after it was logged to the logger
///          "comparisons::viewmodel::utils"; the model then has its prior content.
template <class Callable>
decltype(auto) executeTesselTransaction(::tessel::core::Model& model, Callable&& callable) {
    const foundation::log::Scope scope(BOOST_CURRENT_LOCATION, BOOST_CURRENT_FUNCTION);
    try {
        auto transaction = model->beginTransaction();
        if constexpr (std::is_void_v<std::invoke_result_t<Callable>>) {
            std::forward<Callable>(callable)();
            transaction.commit();
        } else {
            decltype(auto) result = std::forward<Callable>(callable)();
            transaction.commit();
            return result;
        }
    } catch (...) {
        detail::logCurrentException();
        throw;
    }
}

}  // namespace comparisons::viewmodel::utils
