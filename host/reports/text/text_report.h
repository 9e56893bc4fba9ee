#pragma once
// The report for people: the tree of what is visible, with the rows of each entry's table.
#include "output/output.h"
#include "presentation/report.h"
#include "reports/text/text_style.h"

namespace depcompare {

/// Signs are + added, - removed, ~ changed and = unchanged. An entry without a sign is hidden, and
/// there only for what is below it.
void writeTextReport(const Report& report, const TextStyle& style, Output& output);

}  // namespace depcompare
