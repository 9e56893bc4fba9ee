#pragma once
// The measures that a process takes: one function or program stage each, on generated data.
#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <dependency/graph/graph.h>
#include <nlohmann/json.hpp>

#include "generator.h"
#include "process_figures.h"

namespace depcompare::bench {

using Json = nlohmann::ordered_json;

struct MeasureOptions {
    std::uint32_t files = 10'000;
    std::filesystem::path folder = ".";  ///< where the GraphML files and tables are
    bool countAllocations = false;
};

/// Takes one measure.
///
/// Returns: what else is to be told: the counts found, the number of entries or rows.
/// Throws:  `std::runtime_error` where the work was not done, or not right.
using TakeMeasure = Json (*)(const MeasureOptions&, WorkFigures&);

struct Measure {
    std::string_view name;
    TakeMeasure take;
};

[[nodiscard]] std::span<const Measure> libraryMeasures();
[[nodiscard]] std::span<const Measure> viewMeasures();
[[nodiscard]] std::span<const Measure> fileMeasures();

struct GraphPair {
    std::array<std::shared_ptr<const dependency::graph::Graph>, 2> sides;
    ItemCounts expected;
};

[[nodiscard]] GraphPair makeGraphPair(std::uint32_t files);

/// Returns: the path of a side's GraphML file or table, such as `left-1000.graphml`.
[[nodiscard]] std::filesystem::path dataFile(const MeasureOptions& options, std::size_t side,
                                             std::string_view ending);

}  // namespace depcompare::bench
