#pragma once
// The hash of texts that come from files.
#include <cstddef>
#include <string_view>

namespace depcompare {

/// SipHash under a key that each process draws: with a hash that everybody knows, texts could be
/// chosen so that a table degenerates. No order in any output may depend on it.
struct SeededHash {
    [[nodiscard]] std::size_t operator()(std::string_view text) const noexcept;
};

}  // namespace depcompare
