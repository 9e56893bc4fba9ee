#pragma once
// Hashes of IDs, and of IDs joined, that nobody can make collide on purpose.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace dependency::comparisons {

/// The hash of a text, with what it takes to append the text to another one.
struct HashedText {
    std::uint64_t hash = 0;
    std::uint64_t shift = 1;  ///< the base to the power of the text's length
};

/// A polynomial over the code units of a text modulo 2^61 - 1, at a base drawn at random: IDs come
/// from files, and with a known hash they could be chosen so that tables degenerate.
class TextHash {
  public:
    /// Draws the base.
    TextHash();

    /// Complexity: linear in the text.
    [[nodiscard]] HashedText operator()(std::u16string_view text) const noexcept;

    /// Returns: the hash of the text that begins with `head` and continues with `tail`.
    [[nodiscard]] static std::uint64_t joined(const HashedText& head,
                                              const HashedText& tail) noexcept;

  private:
    static constexpr std::size_t step = 8;

    std::array<std::uint64_t, step + 1> powers_{};  // of the base
};

/// Returns: the bits spread so that any of them serve as a place in a table.
[[nodiscard]] constexpr std::uint64_t mixed(std::uint64_t bits) noexcept {
    bits = (bits ^ (bits >> 32U)) * 0xd6e8feb86659fd93U;
    bits = (bits ^ (bits >> 32U)) * 0xd6e8feb86659fd93U;
    return bits ^ (bits >> 32U);
}

}  // namespace dependency::comparisons
