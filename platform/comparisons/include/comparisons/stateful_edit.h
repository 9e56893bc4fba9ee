#pragma once
// One entry of a comparison: a value per side, and whether the sides differ.
#include <cstddef>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

#include <boost/functional/hash.hpp>

#include <comparisons/side.h>

namespace comparisons {

/// A value per side, left first, followed by the state: true if both sides are present and differ.
/// The code that makes an edit decides its state.
template <class Value, std::size_t Sides>
class StatefulEdit {
    static_assert(Sides == sides.size());

  public:
    using value_type = Value;

    StatefulEdit() = default;
    StatefulEdit(Value left, Value right, bool changed)
        : values_{std::move(left), std::move(right)}, changed_(changed) {}

    [[nodiscard]] const Value& operator[](const PassedSide& side) const noexcept {
        return values_[side];
    }
    [[nodiscard]] Value& operator[](const PassedSide& side) noexcept { return values_[side]; }

    [[nodiscard]] bool isChanged() const noexcept { return changed_; }
    void setChanged(bool changed) noexcept { changed_ = changed; }

    friend bool operator==(const StatefulEdit&, const StatefulEdit&) = default;

  private:
    BySide<Value> values_;
    bool changed_ = false;
};

/// Returns: the left value if present, else the right one; valid as long as the edit.
/// Throws:  `std::bad_optional_access` if both are absent.
template <class T, std::size_t Sides>
[[nodiscard]] const T& anySide(const StatefulEdit<std::optional<T>, Sides>& edit) {
    const auto& left = edit[Side::left];
    return left ? *left : edit[Side::right].value();
}

template <class T, std::size_t Sides>
[[nodiscard]] bool hasBothSides(const StatefulEdit<std::optional<T>, Sides>& edit) noexcept {
    return edit[Side::left].has_value() && edit[Side::right].has_value();
}

}  // namespace comparisons

template <class Value, std::size_t Sides>
requires std::is_default_constructible_v<std::hash<Value>>
struct std::hash<comparisons::StatefulEdit<Value, Sides>> {
    std::size_t operator()(const comparisons::StatefulEdit<Value, Sides>& edit) const {
        std::size_t seed = 0;
        for (const auto side : comparisons::sides) {
            boost::hash_combine(seed, std::hash<Value>{}(edit[side]));
        }
        boost::hash_combine(seed, edit.isChanged());
        return seed;
    }
};
