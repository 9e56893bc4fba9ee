#pragma once
// What a generated pair looks like, in figures.
#include <array>
#include <cstddef>
#include <ostream>

#include "generator.h"

namespace depcompare::bench {

struct Distribution {
    std::size_t median = 0;
    std::size_t p99 = 0;
    std::size_t max = 0;
};

struct SideShape {
    std::size_t files = 0;
    std::size_t dependencies = 0;
    std::size_t groups = 0;
    Distribution outDegree;      ///< dependencies that leave a file
    Distribution inDegree;       ///< dependencies that end at a file
    Distribution idLength;       ///< in characters, as the next one
    Distribution componentName;  ///< over both ends of all dependencies
};

[[nodiscard]] SideShape shapeOf(const GeneratedPair& pair, std::size_t side);

/// Writes a small table for people.
void printShape(std::ostream& out, const GeneratedPair& pair);

}  // namespace depcompare::bench
