#pragma once
// The reports for people: what happened at large, and the tree of what is visible.
#include "output/output.h"
#include "presentation/report.h"
#include "reports/text/text_style.h"

namespace depcompare {

/// Signs are + added, - removed, ~ changed and = unchanged. An entry without a sign is hidden, and
/// there only for what is below it. Unless the filters show details, properties of added and removed
/// files and groups in which only components differ are counted, not listed.
void writeTextReport(const Report& report, const TextStyle& style, Output& output);

/// Writes what the text report says before the tree.
void writeSummaryReport(const Report& report, const TextStyle& style, Output& output);

}  // namespace depcompare
