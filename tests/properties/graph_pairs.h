#pragma once
// Random pairs of graphs that have much in common, as lines of text.
#include <iosfwd>
#include <string>

#include <rapidcheck/Gen.h>

namespace dependency::test {

struct GraphPair {
    std::string left;
    std::string right;
};

std::ostream& operator<<(std::ostream& out, const GraphPair& pair);

/// Graphs with nodes of several types, names that differ in case or not at all, properties in
/// several orders and with coinciding displayed names, parallel dependencies, self-dependencies and
/// components whose joined names coincide. Node IDs are prefixes of each other, but no two joined
/// ones coincide.
[[nodiscard]] rc::Gen<GraphPair> distinctPairs();

/// The same with IDs that coincide when joined, the empty one included, on one side and across the
/// sides.
[[nodiscard]] rc::Gen<GraphPair> collidingPairs();

}  // namespace dependency::test
