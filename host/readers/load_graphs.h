#pragma once
// From two paths to two graphs that can be compared.
#include <array>
#include <functional>
#include <string>

#include "readers/build_graphs.h"
#include "readers/read_options.h"

namespace depcompare {

/// Reads and builds both graphs at the same time. `stage` is told what is about to happen.
///
/// Returns: left, right.
/// Throws:  `InputError`, of the left input where both are faulty.
[[nodiscard]] std::array<LoadedGraph, 2> loadGraphs(
    const std::array<std::string, 2>& paths, const ReadOptions& options,
    const std::function<void(const std::string&)>& stage);

/// Reads and builds one graph, by the same rules.
///
/// Throws: `InputError`.
[[nodiscard]] LoadedGraph loadGraph(const std::string& path, const ReadOptions& options);

}  // namespace depcompare
