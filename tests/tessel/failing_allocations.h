#pragma once
// Lets one allocation of the thread fail.
#include <cstddef>

namespace tessel::core::testing {

/// While it lives, the allocation after the next `successes` of this thread throws
/// `std::bad_alloc`, and those after it succeed again.
class FailingAllocation {
  public:
    explicit FailingAllocation(std::size_t successes) noexcept;
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    [[nodiscard]] bool happened() const noexcept;
};

/// Returns: how many allocations the thread has made.
[[nodiscard]] std::size_t allocations() noexcept;

}  // namespace tessel::core::testing
