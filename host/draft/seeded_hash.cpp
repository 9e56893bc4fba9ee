#include "draft/seeded_hash.h"

#include <array>
#include <bit>

#include <sodium/crypto_shorthash.h>

namespace depcompare {

namespace {

using Key = std::array<unsigned char, crypto_shorthash_KEYBYTES>;

Key randomKey() {
    Key key{};
    crypto_shorthash_keygen(key.data());
    return key;
}

}  // namespace

std::size_t SeededHash::operator()(std::string_view text) const noexcept {
    static const Key key = randomKey();
    std::array<unsigned char, crypto_shorthash_BYTES> hash{};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are what it hashes.
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    crypto_shorthash(hash.data(), bytes, text.size(), key.data());
    return std::bit_cast<std::size_t>(hash);
}

}  // namespace depcompare
