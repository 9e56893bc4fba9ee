#pragma once
// What every form of report is written from.
#include <array>
#include <memory>
#include <string>

#include <dependency/comparisons/compare_graphs.h>

#include "draft/build_graphs.h"
#include "presentation/enabled_filters.h"
#include "presentation/ledger.h"
#include "presentation/presented_tree.h"
#include "presentation/summary.h"

namespace depcompare {

struct Report {
    std::array<LoadedGraph, 2> inputs;     ///< left, right
    std::array<std::string, 2> arguments;  ///< how the command line named them
    std::shared_ptr<const dependency::comparisons::GraphComparison> comparison;
    Summary summary;
    Ledger ledger;
    std::unique_ptr<const PresentedTree> tree;
};

using Inputs = std::array<LoadedGraph, 2>;

/// Compares two loaded graphs and does the sums over both of them.
///
/// Returns: everything but the ledger's visibility.
/// Throws:  `LedgerError`, and what the comparison throws.
[[nodiscard]] Report compareInputs(Inputs inputs, std::array<std::string, 2> arguments,
                                   EnabledFilters filters);

/// Adds up what is visible and what is hidden, as a report needs it and an exit status does not.
///
/// Throws: `LedgerError`.
void completeLedger(Report& report);

}  // namespace depcompare
