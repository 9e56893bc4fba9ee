#pragma once
// The report for pull requests.
#include <cstddef>
#include <optional>

#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Smaller limits leave no room for the counts and the ending.
inline constexpr std::size_t fewestMarkdownBytes = 4000;

/// Writes the visible differences in GitHub's Markdown: counts, then what was added and removed, then
/// the changes; long lists are folded. Writes no more than `mostBytes`: the last entries are left out
/// then, and counted at the end.
///
/// Requires: `mostBytes` not below `fewestMarkdownBytes`.
void writeMarkdownReport(const Report& report, std::optional<std::size_t> mostBytes,
                         Output& output);

}  // namespace depcompare
