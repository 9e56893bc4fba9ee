#pragma once
// The two sides of a comparison.
#include <array>
#include <cstddef>
#include <cstdint>

#include <boost/assert/source_location.hpp>

#include <comparisons/export.h>

namespace comparisons {

enum class Side : std::uint8_t {
    left = 0,   ///< the old state
    right = 1,  ///< the new state
};

/// Order: left, right, as every loop over sides runs.
inline constexpr std::array sides{Side::left, Side::right};

namespace detail {
[[noreturn]] COMPARISONS_EXPORT void terminateOnInvalidSide(const boost::source_location& caller,
                                                            const char* signature) noexcept;
}

/// A side, and the place of the code that passes it.
struct PassedSide {
    constexpr PassedSide(Side passed,
                         const boost::source_location& from = {__builtin_FILE(), __builtin_LINE(),
                                                               __builtin_FUNCTION()}) noexcept
        : side(passed), caller(from) {}

    Side side;
    boost::source_location caller;
};

/// Returns: 0 for left, 1 for right. Any other side is a broken invariant and ends the process with
///          a line that names the place of the call.
[[nodiscard]] constexpr std::size_t indexOf(const PassedSide& passed) noexcept {
    const auto index = static_cast<std::size_t>(passed.side);
    if (index >= sides.size()) [[unlikely]] {
        detail::terminateOnInvalidSide(passed.caller,
                                       static_cast<const char*>(__PRETTY_FUNCTION__));
    }
    return index;
}

/// A value per side. Loops over it run left first.
template <class T>
struct BySide : std::array<T, sides.size()> {
    [[nodiscard]] constexpr const T& operator[](const PassedSide& side) const noexcept {
        return std::array<T, sides.size()>::operator[](indexOf(side));
    }
    [[nodiscard]] constexpr T& operator[](const PassedSide& side) noexcept {
        return std::array<T, sides.size()>::operator[](indexOf(side));
    }
};

template <class T>
BySide(T, T) -> BySide<T>;

}  // namespace comparisons
