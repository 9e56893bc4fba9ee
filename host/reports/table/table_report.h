#pragma once
// The report as a table, for spreadsheets and data tools.
#include "output/output.h"
#include "output/table_writer.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes a header, and for each difference that is visible a line of IDs, keys and values, without
/// labels: one for an entry that was added, removed or changed, then one for each such row of it. A
/// changed entry or dependency has one for each attribute of its own that differs, or one line
/// without if it has none.
///
/// Order: that of the tree.
void writeTableReport(const Report& report, const TableForm& form, Output& output);

}  // namespace depcompare
