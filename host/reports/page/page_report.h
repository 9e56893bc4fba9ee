#pragma once
// The report to look at: one HTML page that needs nothing else.
#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes a page that shows the changes as text, and with scripts everything, under any choice of
/// filters.
///
/// Complexity: makes the comparison's tables once per choice of filters.
void writePage(const Report& report, Output& output);

}  // namespace depcompare
