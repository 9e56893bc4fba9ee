#pragma once
// Random numbers that are the same with every standard library: the engine's output is fixed by the
// language, the standard distributions' is not.
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace depcompare::bench {

class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    /// Returns: a number in [0, bound).
    /// Requires: 0 < bound <= 2^60 (the bias towards small numbers stays negligible).
    [[nodiscard]] std::uint64_t below(std::uint64_t bound) { return engine_() % bound; }

    template <class T>
    void shuffle(std::vector<T>& values) {
        for (std::size_t i = values.size(); i > 1; --i) {
            std::swap(values[i - 1], values[below(i)]);
        }
    }

  private:
    std::mt19937_64 engine_;
};

}  // namespace depcompare::bench
