#pragma once
// The report for pull requests.
#include <cstddef>

#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Smaller limits leave no room for the counts and the ending.
inline constexpr std::size_t fewestMarkdownBytes = 4000;

/// What a comment on a pull request may hold.
inline constexpr std::size_t mostMarkdownBytes = 65'000;

/// Writes the visible differences in GitHub's Markdown: counts, then added and removed groups between
/// nodes that exist anyway, then the rest by folder; long lists are folded. Writes no more than
/// `mostBytes`: groups are left out then, and after these files, all counted at the end.
///
/// Requires: `mostBytes` not below `fewestMarkdownBytes`.
void writeMarkdownReport(const Report& report, std::size_t mostBytes, Output& output);

}  // namespace depcompare
