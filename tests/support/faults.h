#pragma once
// Calls of a thread, counted by kind, any of which can be made to fail. Allocations are counted by
// replacing the global functions; of its other calls a program says which there are.
#include <cstddef>
#include <cstdint>

namespace testing_faults {

enum class Kind : std::uint8_t { allocation, graph, catalog, objectModel };
inline constexpr std::size_t kindCount = 4;

/// What a call throws that was made to fail; an allocation throws `std::bad_alloc`.
struct CallFailed {
    Kind kind;
};

/// What becomes of the calls of all kinds after one that failed.
enum class Then : std::uint8_t { succeed, fail };

/// While it lives, the call of this kind after the next `successes` of this thread fails. An
/// allocation that may not throw fails only after that one: sorts try a buffer this way and go on
/// without one.
class Failing {
  public:
    explicit Failing(Kind kind, std::size_t successes, Then then = Then::succeed) noexcept;
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;
    ~Failing();

    [[nodiscard]] bool happened() const noexcept;
};

/// To be called before a call of this kind.
void mayFail(Kind kind);

/// Returns: how many allocations the thread has made, and how many blocks it has not given back.
[[nodiscard]] std::size_t allocations() noexcept;
[[nodiscard]] long blocks() noexcept;

}  // namespace testing_faults
