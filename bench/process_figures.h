#pragma once
// What a piece of work costs the process: CPU time, memory, allocations.
#include <malloc.h>

#include <cstddef>
#include <utility>

namespace depcompare::bench {

/// Figures of one piece of work; those in the lower half are all 0 unless allocations are counted,
/// which takes time of its own.
struct WorkFigures {
    double cpuSeconds = 0;           ///< user and system, all threads
    double wallSeconds = 0;          ///< on the clock
    std::size_t residentPeak = 0;    ///< in bytes, above what was resident before
    std::size_t residentResult = 0;  ///< in bytes, what stayed

    std::size_t allocations = 0;
    std::size_t heapPeak = 0;    ///< in bytes, as the allocator rounds them up; above before
    std::size_t heapResult = 0;  ///< likewise; what stayed
};

/// Counts every `operator new` of the process while it lives. Not for several threads.
class AllocationCount {
  public:
    AllocationCount() noexcept;
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;

    void writeTo(WorkFigures& figures) const noexcept;
};

namespace detail {

/// Takes the readings of before and after.
class Readings {
  public:
    Readings();
    void finish(WorkFigures& figures) const;

  private:
    std::size_t resident_;
    double cpuSeconds_;
    double wallSeconds_;
};

}  // namespace detail

/// Runs `work` on an allocator without free memory, as a fresh process has it.
///
/// Returns: what `work` returns, alive when the readings are taken.
template <class Work>
auto figuresOf(bool countAllocations, WorkFigures& figures, Work&& work) {
    malloc_trim(0);
    if (countAllocations) {
        const AllocationCount count;
        auto result = std::forward<Work>(work)();
        count.writeTo(figures);
        return result;
    }
    const detail::Readings before;
    auto result = std::forward<Work>(work)();
    before.finish(figures);
    return result;
}

}  // namespace depcompare::bench
