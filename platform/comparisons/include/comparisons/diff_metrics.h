#pragma once
// How much a comparison shows: counts of its visible edits.
#include <cstddef>
#include <cstdint>

namespace comparisons {

template <std::size_t Sides>
struct DiffMetrics;

/// Counts of visible edits, of two sides.
template <>
struct DiffMetrics<2> {
    std::uint32_t leftOnly = 0;
    std::uint32_t rightOnly = 0;
    std::uint32_t changed = 0;  ///< present on both sides
    std::uint32_t nested = 0;   ///< carried over from nested comparisons only

    DiffMetrics& operator+=(const DiffMetrics& other) noexcept {
        leftOnly += other.leftOnly;
        rightOnly += other.rightOnly;
        changed += other.changed;
        nested += other.nested;
        return *this;
    }

    [[nodiscard]] bool areStructural() const noexcept { return leftOnly != 0 || rightOnly != 0; }
    [[nodiscard]] bool areZero() const noexcept { return *this == DiffMetrics(); }

    friend bool operator==(const DiffMetrics&, const DiffMetrics&) = default;
};

}  // namespace comparisons
