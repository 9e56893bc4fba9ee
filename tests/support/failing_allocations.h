#pragma once
// Counts the allocations of a thread and lets one of them fail, by replacing the global functions.
#include <cstddef>

namespace testing_allocations {

/// While it lives, the allocation after the next `successes` of this thread throws
/// `std::bad_alloc`, and those after it succeed again. One that may not throw never fails on
/// request: sorts try a buffer this way and go on without one.
class FailingAllocation {
  public:
    explicit FailingAllocation(std::size_t successes) noexcept;
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    [[nodiscard]] bool happened() const noexcept;
};

/// Returns: how many allocations the thread has made, and how many blocks it has not given back.
[[nodiscard]] std::size_t allocations() noexcept;
[[nodiscard]] long blocks() noexcept;

}  // namespace testing_allocations
