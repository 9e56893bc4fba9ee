#pragma once
// What happened at large, as lines before the tree.
#include "output/output.h"
#include "presentation/report.h"
#include "reports/text/text_style.h"

namespace depcompare {

/// Writes the verdict, the counts and what insights say; 24 lines at most, unless insights are full.
/// Long names are shortened to fit into a line then, and what is left out is counted.
void writeAtLarge(const Report& report, const TextStyle& style, Output& output);

}  // namespace depcompare
