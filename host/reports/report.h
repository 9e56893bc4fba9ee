#pragma once
// What every form of report is written from.
#include <array>
#include <memory>
#include <string>

#include <dependency/comparisons/compare_graphs.h>

#include "readers/build_graphs.h"
#include "reports/summary.h"

namespace depcompare {

struct Report {
    std::array<LoadedGraph, 2> inputs;     ///< left, right
    std::array<std::string, 2> arguments;  ///< how the command line named them
    std::shared_ptr<const dependency::comparisons::GraphComparison> comparison;
    Summary summary;
};

}  // namespace depcompare
