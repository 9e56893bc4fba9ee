#pragma once
// Loads two inputs as graphs that can be compared.
#include <array>
#include <functional>
#include <string_view>

#include "draft/build_graphs.h"
#include "draft/read_options.h"
#include "input/input.h"

namespace depcompare {

/// Called with what is about to happen.
using Stage = std::function<void(std::string_view)>;

/// Reads and builds both graphs at the same time.
///
/// Requires: two inputs of which nothing was read yet; of `chooseRenames` what `buildGraphs` does.
/// Returns:  left, right.
/// Throws:   `InputError`, of the left input if both are faulty, and what `chooseRenames` throws.
[[nodiscard]] std::array<LoadedGraph, 2> loadGraphs(std::array<Input, 2> inputs,
                                                    const ReadOptions& options, const Stage& stage,
                                                    const ChooseRenames& chooseRenames = {});

/// Reads and builds one graph in the same way.
///
/// Requires: an input of which nothing was read yet.
/// Throws:   `InputError`.
[[nodiscard]] LoadedGraph loadGraph(Input input, const ReadOptions& options, const Stage& stage);

}  // namespace depcompare
