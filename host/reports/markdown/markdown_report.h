#pragma once
// The report for pull requests.
#include <cstddef>
#include <optional>

#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Smaller limits have no room for the counts and for what is said of the rest.
inline constexpr std::size_t fewestMarkdownBytes = 4000;

/// Writes what visibly differs in GitHub's Markdown: counts, then what was added and removed, then
/// the changes, folded where they are many. No more than `mostBytes` are written; what has no room
/// then is left out, the last first, and counted at the end.
///
/// Requires: `mostBytes` not below `fewestMarkdownBytes`.
void writeMarkdownReport(const Report& report, std::optional<std::size_t> mostBytes,
                         Output& output);

}  // namespace depcompare
