#pragma once
// Brings results to where the command line wants them: the terminal, a pager, a pipe, files.
#include <dependency/graph/graph.h>

#include "cli/options.h"
#include "output/progress.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes the report, and those besides it, whose files appear when everything is written. The
/// progress line gives way to what the terminal shows.
///
/// Throws: `std::system_error`; the files are as they were then.
void deliverReports(const Report& report, const Options& options, Progress& progress);

/// Writes the graph as `options.conversion` says.
///
/// Throws: as `deliverReports`.
void deliverGraph(const dependency::graph::Graph& graph, const Options& options,
                  Progress& progress);

}  // namespace depcompare
