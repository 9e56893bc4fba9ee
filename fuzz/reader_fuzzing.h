#pragma once
// What every fuzz target does with the bytes that it is given.
#include <cstddef>
#include <cstdint>

#include "draft/graph_draft.h"
#include "input/input.h"
#include "input/limits.h"

namespace depcompare::fuzz {

/// Small, so that a few bytes cannot make a run slow.
inline constexpr Limits limits{.bytes = 1U << 20U,
                               .nodes = 10'000,
                               .edges = 10'000,
                               .properties = 1'000,
                               .textBytes = 1U << 16U,
                               .nestingDepth = 64};

/// Registers what comparisons need; once.
void prepare();

/// Reads the bytes twice, as two files: either the reader refuses them with its own error, or what
/// it read can be compared and does not differ from itself. Anything else ends the program.
void tryReader(GraphDraft (*read)(Input& input), const std::uint8_t* data, std::size_t size);

}  // namespace depcompare::fuzz
