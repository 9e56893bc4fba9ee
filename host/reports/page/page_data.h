#pragma once
// What the scripts of the page read: the whole comparison in packed tables.
#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes script elements that hold data. `docs/page.md` describes them.
void writePageData(const Report& report, Output& output);

}  // namespace depcompare
