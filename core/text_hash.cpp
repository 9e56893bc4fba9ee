#include "core/text_hash.h"

#include <random>

namespace dependency::comparisons {

namespace {

// NOLINTNEXTLINE(modernize-use-using): __extension__ may not precede an alias.
__extension__ typedef unsigned __int128 Wide;

constexpr std::uint64_t modulus = (std::uint64_t{1} << 61U) - 1;

// Requires: less than 2^124.
std::uint64_t reduced(Wide value) {
    const auto low = static_cast<std::uint64_t>(value) & modulus;
    const auto sum = low + static_cast<std::uint64_t>(value >> 61U);
    const auto once = (sum & modulus) + (sum >> 61U);
    return once >= modulus ? once - modulus : once;
}

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    return reduced(Wide{a} * b);
}

}  // namespace

TextHash::TextHash() {
    std::random_device random;
    powers_[0] = 1;
    powers_[1] = std::uniform_int_distribution<std::uint64_t>(modulus / 2, modulus - 1)(random);
    for (std::size_t i = 2; i <= step; ++i) {
        powers_[i] = product(powers_[i - 1], powers_[1]);
    }
}

HashedText TextHash::operator()(std::u16string_view text) const noexcept {
    HashedText hashed;
    const auto append = [&](std::size_t units) {
        Wide sum = Wide{hashed.hash} * powers_[units];
        for (std::size_t i = 0; i < units; ++i) {
            // No code unit counts for nothing, so that texts of different lengths differ.
            sum += Wide{powers_[units - 1 - i]} * (std::uint64_t{text[i]} + 1);
        }
        hashed.hash = reduced(sum);
        hashed.shift = product(hashed.shift, powers_[units]);
        text.remove_prefix(units);
    };
    // Several units at a time, since each reduction waits for the one before.
    while (text.size() >= step) {
        append(step);
    }
    append(text.size());
    return hashed;
}

std::uint64_t TextHash::joined(const HashedText& head, const HashedText& tail) noexcept {
    return reduced(Wide{head.hash} * tail.shift + tail.hash);
}

}  // namespace dependency::comparisons
