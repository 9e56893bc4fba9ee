#pragma once
// What every fuzz target does with the bytes that it is given.
#include <cstddef>
#include <cstdint>

#include "draft/graph_draft.h"
#include "input/input.h"

namespace depcompare::fuzz {

/// Registers what comparisons need; once.
void prepare();

/// Reads the bytes twice, as two files: either the reader refuses them with its own error, or what
/// it read can be compared and does not differ from itself. Anything else ends the program.
void tryReader(GraphDraft (*read)(Input& input), const std::uint8_t* data, std::size_t size);

}  // namespace depcompare::fuzz
