#pragma once
// The summary as a small table.
#include <array>
#include <string_view>
#include <utility>

#include "output/output.h"
#include "presentation/summary.h"

namespace depcompare {

/// Returns: each kind of entry and of row under its name, in the order in which tables list them.
[[nodiscard]] std::array<std::pair<std::string_view, EditCounts>, 5> countsByKind(
    const Summary& summary);

/// Writes a line of headings, and a line for each kind of entry and of row.
void writeCounts(const Summary& summary, Output& output);

}  // namespace depcompare
