#pragma once
// How much an input may hold before it is refused.
#include <cstddef>
#include <cstdint>

namespace depcompare {

struct Limits {
    std::uint64_t bytes = std::uint64_t{8} << 30U;
    std::size_t nodes = 20'000'000;
    std::size_t edges = 100'000'000;
    std::size_t properties = 10'000;     ///< of one node, or of the graph
    std::size_t textBytes = 16U << 20U;  ///< of one ID, name, key or value, as UTF-8
    std::size_t nestingDepth = 256;
};

}  // namespace depcompare
