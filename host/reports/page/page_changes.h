#pragma once
// The part of the page that needs no scripts, and is printed: counts, and the visible changes.
#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes sections of HTML. The changes end at a limit, and then say what is left.
void writePageChanges(const Report& report, Output& output);

}  // namespace depcompare
