#pragma once
// The report for programs.
#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes one JSON object, version 1 of the report's format, with one line for each entry.
void writeJsonReport(const Report& report, Output& output);

}  // namespace depcompare
