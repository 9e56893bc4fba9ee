#include "failing_allocations.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace testing_allocations {
namespace {

thread_local std::size_t made = 0;
thread_local std::size_t failing = SIZE_MAX;
thread_local long held = 0;

void* allocate(std::size_t size) noexcept {
    void* const memory = std::malloc(size == 0 ? 1 : size);
    held += memory != nullptr ? 1 : 0;
    return memory;
}

void release(void* memory) noexcept {
    held -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

}  // namespace

FailingAllocation::FailingAllocation(std::size_t successes) noexcept {
    failing = made + successes;
}
FailingAllocation::~FailingAllocation() {
    failing = SIZE_MAX;
}
bool FailingAllocation::happened() const noexcept {
    return made > failing;
}

std::size_t allocations() noexcept {
    return made;
}
long blocks() noexcept {
    return held;
}

}  // namespace testing_allocations

void* operator new(std::size_t size) {
    using namespace testing_allocations;
    void* const memory = made++ == failing ? nullptr : allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return testing_allocations::allocate(size);
}
void operator delete(void* memory) noexcept {
    testing_allocations::release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    testing_allocations::release(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    testing_allocations::release(memory);
}
