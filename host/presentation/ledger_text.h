#pragma once
// The account of a comparison in words and numbers, as lines that a report can lay out.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "draft/build_graphs.h"
#include "presentation/ledger.h"
#include "presentation/summary.h"

namespace depcompare {

/// Returns: the number with the word that goes with it.
[[nodiscard]] std::string counted(std::size_t count, std::string_view one,
                                  std::string_view several);

/// Returns: "3 files, 7 dependencies".
[[nodiscard]] std::string contentsOf(const LoadedGraph& input);

/// Returns: for each filter that hides differences, how many, as a sentence without its full stop.
[[nodiscard]] std::vector<std::string> hiddenLines(const Visibility& visibility);

/// Returns: "4 nodes: 3 files, 1 lib".
[[nodiscard]] std::string nodesLine(const SideLedger& side);

/// Returns: "7 dependencies: 5 compared, 2 duplicates".
[[nodiscard]] std::string dependenciesLine(const SideLedger& side);

/// What a line about the left-out parts of a side counts: all of them, or those that `nodesLine` and
/// `dependenciesLine` do not.
enum class LeftOutParts : std::uint8_t { all, others };

/// Returns: "Left out: 3 properties, 2 components"; nothing if nothing was.
[[nodiscard]] std::string leftOutLine(const SideLedger& side, LeftOutParts which);

/// Returns: a line of headings, and a line per kind of entry and of row.
[[nodiscard]] std::string countsTable(const Summary& summary);

}  // namespace depcompare
