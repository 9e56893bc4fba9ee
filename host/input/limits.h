#pragma once
// How much an input may contain before it is refused, and the messages that then say so.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace depcompare {

struct Limits {
    std::uint64_t bytes = std::uint64_t{8} << 30U;
    std::size_t nodes = 20'000'000;
    std::size_t edges = 100'000'000;
    std::size_t properties = 10'000;     ///< of one node, or of the graph
    std::size_t textBytes = 16U << 20U;  ///< of one ID, name, key or value, as UTF-8
    std::size_t nestingDepth = 256;
};

[[nodiscard]] std::string tooManyEdges(std::size_t most);
[[nodiscard]] std::string tooLongText(const Limits& limits);
/// `what` is nested: "elements", "values", "graphs".
[[nodiscard]] std::string tooDeep(std::string_view what, const Limits& limits);

}  // namespace depcompare
