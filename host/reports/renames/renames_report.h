#pragma once
// The renames as lines that a person can edit and the program can read again.
#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes a line per rename: the old ID, a tab, the new one, another tab, and how sure it is.
///
/// Requires: a report with insights.
/// Throws:   `std::runtime_error` for an ID that such a line cannot hold.
void writeRenames(const Report& report, Output& output);

}  // namespace depcompare
