#pragma once
// Does the same for the left and the right input, at the same time.
#include <array>
#include <cstddef>
#include <future>
#include <utility>

namespace depcompare {

/// Calls `task(0)` on the calling thread and `task(1)` on another, and waits for both. If no thread
/// can be created, it calls one after the other.
///
/// Returns: both results.
/// Throws:  what a call throws; if both do, what the left one throws.
/// Threads: the two calls must not disturb each other.
template <class Task>
[[nodiscard]] auto onBothSides(const Task& task) {
    constexpr auto policy = std::launch::async | std::launch::deferred;
    auto right = std::async(policy, [&task] { return task(std::size_t{1}); });
    auto left = task(std::size_t{0});
    return std::array{std::move(left), right.get()};
}

}  // namespace depcompare
