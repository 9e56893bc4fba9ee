#pragma once
// The account of a comparison: what the files contained, and where all of it went.
#include <array>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "draft/build_graphs.h"
#include "presentation/presented_tree.h"
#include "presentation/summary.h"

namespace depcompare {

struct SideLedger {
    std::size_t nodes = 0;
    std::size_t files = 0;
    std::map<std::u16string, std::size_t> otherNodes;  ///< by type ID
    std::size_t comparedFiles = 0;

    std::size_t dependencies = 0;
    std::size_t compared = 0;  ///< those that have a row
    std::size_t folded = 0;    ///< stood for by another of their group with the same pairing key
    std::size_t leavingOthers = 0;  ///< of nodes that are no files

    std::vector<std::string> warnings;  ///< what looked odd when the file was read
};

struct Ledger {
    std::array<SideLedger, 2> sides;  ///< left, right
    std::size_t entries = 0;          ///< of the comparison tree
    std::size_t rows = 0;             ///< of all its details
    Visibility visibility;
};

/// A sum of the ledger does not hold: something was lost, or counted twice.
class LedgerError : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// Counts everything but the visibility. What a graph contained is counted apart from what became
/// of it, so that the sums mean something.
[[nodiscard]] Ledger countLedger(const std::array<LoadedGraph, 2>& inputs,
                                 const dependency::comparisons::GraphComparison& comparison,
                                 const Summary& summary);

/// Throws: `LedgerError` for a side whose nodes or dependencies do not add up.
void checkSides(const Ledger& ledger);

/// Throws: `LedgerError` where what is visible and what the filters hide is not everything.
void checkVisibility(const Ledger& ledger);

}  // namespace depcompare
