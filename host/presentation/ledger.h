#pragma once
// The account of a comparison: what the files contained, and what became of all of it.
#include <array>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <dependency/insight/causes.h>

#include "draft/build_graphs.h"
#include "presentation/presented_tree.h"
#include "presentation/summary.h"

namespace depcompare {

struct SideLedger {
    std::size_t nodes = 0;  ///< of the file
    std::size_t files = 0;
    std::map<std::u16string, std::size_t> otherNodes;  ///< by type ID
    std::size_t comparedFiles = 0;

    std::size_t dependencies = 0;   ///< of the file
    std::size_t compared = 0;       ///< those that have a row
    std::size_t folded = 0;         ///< represented by another one of their group with the same key
    std::size_t leavingOthers = 0;  ///< from nodes that are not files

    LeftOut leftOut;  ///< what the command line asked to leave out

    std::vector<std::string> warnings;  ///< from reading the file
};

struct Ledger {
    std::array<SideLedger, 2> sides;  ///< left, right
    std::size_t entries = 0;          ///< of the comparison tree
    std::size_t rows = 0;             ///< of all its details
    Visibility visibility;
    std::vector<std::string> warnings;  ///< of what looks odd about the two files together
};

/// A sum of the ledger does not hold: something was lost, or counted twice.
class LedgerError : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// Counts what the graphs contain apart from what became of it, so that the sums prove something.
///
/// Requires: `summary` and `tree` of `comparison`.
[[nodiscard]] Ledger countLedger(const std::array<LoadedGraph, 2>& inputs,
                                 const dependency::comparisons::GraphComparison& comparison,
                                 const Summary& summary, const PresentedTree& tree);

/// Throws: `LedgerError` unless the nodes and dependencies of each side add up, and what is visible
///         and what the filters hide add up to all entries and rows.
void checkLedger(const Ledger& ledger);

/// Throws: `LedgerError` unless the causes of added, removed and changed links add up to the groups.
///
/// Requires: causes of links of all types.
void checkCauses(const dependency::insight::Causes& causes, const EditCounts& groups);

}  // namespace depcompare
