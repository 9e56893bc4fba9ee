#pragma once
// A generated side as plain tables of tab-separated text, from which the peers load it.
#include <cstddef>
#include <ostream>

#include "generator.h"

namespace depcompare::bench {

/// Writes a line a file: ID, name, type, and the values of `propertyKeys`.
void writeFileTable(const GeneratedPair& pair, std::size_t side, std::ostream& out);

/// Writes a line a dependency: IDs of both files, type, and each end's component and its type.
void writeDependencyTable(const GeneratedPair& pair, std::size_t side, std::ostream& out);

}  // namespace depcompare::bench
