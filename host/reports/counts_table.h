#pragma once
// The summary as a small table.
#include "output.h"
#include "reports/summary.h"

namespace depcompare {

/// Writes a line of headings, and a line for each kind of entry and of row.
void writeCounts(const Summary& summary, Output& output);

}  // namespace depcompare
