#pragma once
// The part of the page that needs no scripts and is printed: counts and visible changes.
#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes sections of HTML. The changes end at a limit, with a count of the rest.
void writePageChanges(const Report& report, Output& output);

}  // namespace depcompare
