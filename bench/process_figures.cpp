#include "process_figures.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

namespace depcompare::bench {

namespace {

struct Heap {
    bool counting = false;
    std::size_t allocations = 0;
    std::ptrdiff_t live = 0;  // what was there before is released below zero
    std::ptrdiff_t peak = 0;
};

Heap heap;

// What a block takes of the memory: jemalloc rounds sizes up and keeps nothing beside the block.
std::ptrdiff_t sizeOf(void* block) {
    return static_cast<std::ptrdiff_t>(malloc_usable_size(block));
}

std::size_t readStatus(std::string_view field) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == field) {
            std::size_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
        status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    throw std::runtime_error("no figure of memory in /proc/self/status");
}

double secondsOn(clockid_t clock) {
    timespec time{};
    if (clock_gettime(clock, &time) != 0) {
        throw std::runtime_error("no such clock");
    }
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

std::size_t above(std::size_t after, std::size_t before) {
    return after - std::min(before, after);
}

}  // namespace

AllocationCount::AllocationCount() noexcept {
    heap = {.counting = true};
}

AllocationCount::~AllocationCount() {
    heap.counting = false;
}

void AllocationCount::writeTo(WorkFigures& figures) const noexcept {
    figures.allocations = heap.allocations;
    figures.heapPeak = static_cast<std::size_t>(heap.peak);
    figures.heapResult = static_cast<std::size_t>(std::max<std::ptrdiff_t>(heap.live, 0));
}

namespace detail {

// Writing 5 makes the peak start again from what is resident now.
Readings::Readings() {
    std::ofstream("/proc/self/clear_refs") << 5 << std::flush;
    resident_ = readStatus("VmRSS:");
    cpuSeconds_ = secondsOn(CLOCK_PROCESS_CPUTIME_ID);
    wallSeconds_ = secondsOn(CLOCK_MONOTONIC);
}

void Readings::finish(WorkFigures& figures) const {
    figures.cpuSeconds = secondsOn(CLOCK_PROCESS_CPUTIME_ID) - cpuSeconds_;
    figures.wallSeconds = secondsOn(CLOCK_MONOTONIC) - wallSeconds_;
    figures.residentPeak = above(readStatus("VmHWM:"), resident_);
    figures.residentResult = above(readStatus("VmRSS:"), resident_);
}

}  // namespace detail

}  // namespace depcompare::bench

// The array, sized and nothrow forms end in these.
void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    using depcompare::bench::heap;
    if (heap.counting) {
        ++heap.allocations;
        heap.live += depcompare::bench::sizeOf(block);
        heap.peak = std::max(heap.peak, heap.live);
    }
    return block;
}

void operator delete(void* block) noexcept {
    using depcompare::bench::heap;
    if (heap.counting && block != nullptr) {
        heap.live -= depcompare::bench::sizeOf(block);
    }
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}
