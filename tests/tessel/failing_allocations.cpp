#include "failing_allocations.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace tessel::core::testing {
namespace {

thread_local std::size_t made = 0;
thread_local std::size_t failing = SIZE_MAX;

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

}  // namespace tessel::core::testing

void* operator new(std::size_t size) {
    using namespace tessel::core::testing;
    const bool fails = made++ == failing;
    void* const memory = fails ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
