#include "faults.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace testing_faults {
namespace {

thread_local std::array<std::size_t, kindCount> made = {};
thread_local std::size_t failing = SIZE_MAX;
thread_local Kind failingKind = Kind::allocation;
thread_local Then afterwards = Then::succeed;
thread_local bool failed = false;
thread_local long held = 0;

bool fails(Kind kind) noexcept {
    const std::size_t call = made[static_cast<std::size_t>(kind)]++;
    if (failed) {
        return afterwards == Then::fail;
    }
    failed = kind == failingKind && call == failing;
    return failed;
}

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

Failing::Failing(Kind kind, std::size_t successes, Then then) noexcept {
    failing = made[static_cast<std::size_t>(kind)] + successes;
    failingKind = kind;
    afterwards = then;
}
Failing::~Failing() {
    failing = SIZE_MAX;
    failed = false;
}
bool Failing::happened() const noexcept {
    return failed;
}

void mayFail(Kind kind) {
    if (fails(kind)) {
        throw CallFailed{kind};
    }
}

std::size_t allocations() noexcept {
    return made[static_cast<std::size_t>(Kind::allocation)];
}
long blocks() noexcept {
    return held;
}

}  // namespace testing_faults

void* operator new(std::size_t size) {
    using namespace testing_faults;
    void* const memory = fails(Kind::allocation) ? nullptr : allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    using namespace testing_faults;
    return failed && afterwards == Then::fail ? nullptr : allocate(size);
}
void operator delete(void* memory) noexcept {
    testing_faults::release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    testing_faults::release(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    testing_faults::release(memory);
}
