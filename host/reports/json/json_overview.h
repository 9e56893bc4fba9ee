#pragma once
// The parts of the report for programs that stand before its tree: the inputs and the counts.
#include "output/json_writer.h"
#include "presentation/report.h"

namespace depcompare {

/// Writes what is told about the file of one side, an object.
void writeJsonInput(const Report& report, std::size_t side, JsonWriter& json);

/// Writes an object with a member for each kind of entry and of row.
void writeJsonSummary(const Summary& summary, JsonWriter& json);

}  // namespace depcompare
