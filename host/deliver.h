#pragma once
// Brings results to where the command line asks for them: the terminal, a pager, a pipe, files.
#include <dependency/graph/graph.h>

#include "cli/options.h"
#include "output/progress.h"
#include "presentation/report.h"
#include "reports/text/why_report.h"

namespace depcompare {

/// Writes the report and the further ones, whose files appear when everything is written. The
/// progress line disappears before the terminal shows anything else.
///
/// Throws: `std::system_error`; the files are unchanged then.
void deliverReports(const Report& report, const Options& options, Progress& progress);

/// Writes the graph as `options.conversion` says.
///
/// Throws: as `deliverReports`.
void deliverGraph(const dependency::graph::Graph& graph, const Options& options,
                  Progress& progress);

/// Writes why one node needs another.
///
/// Throws: as `deliverReports`.
void deliverWhy(const Why& why, const Options& options, Progress& progress);

}  // namespace depcompare
