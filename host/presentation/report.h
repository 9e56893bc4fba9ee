#pragma once
// What every form of report is written from.
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <dependency/comparisons/compare_graphs.h>

#include "draft/build_graphs.h"
#include "presentation/enabled_filters.h"
#include "presentation/insights.h"
#include "presentation/ledger.h"
#include "presentation/presented_tree.h"
#include "presentation/summary.h"
#include "presentation/versions.h"

namespace depcompare {

using Inputs = std::array<LoadedGraph, 2>;

struct Report {
    Inputs inputs;                         ///< left, right
    std::array<std::string, 2> arguments;  ///< how the command line named them
    std::shared_ptr<const dependency::comparisons::GraphComparison> comparison;
    Summary summary;
    std::unique_ptr<const PresentedTree> tree;
    Ledger ledger;
    std::shared_ptr<const Insights> insights;  ///< null if they are off
    std::optional<VersionCounts> versions;     ///< if telling properties are shown

    /// Returns: "No differences." or "No visible differences."; nothing if there are some.
    [[nodiscard]] std::string_view verdict() const;
};

/// Returns: the keys that the format of either side declares telling, sorted.
[[nodiscard]] TellingKeys tellingKeysOf(const Inputs& inputs);

/// Compares two graphs and computes summary, ledger and insights, for which `renames` is as in
/// `findInsights`.
///
/// Throws: `LedgerError`, and what the comparison and `findInsights` throw.
[[nodiscard]] Report makeReport(Inputs inputs, std::array<std::string, 2> arguments,
                                EnabledFilters filters, const InsightOptions& options = {},
                                std::optional<std::vector<ListedRename>> renames = std::nullopt,
                                TellingKeys telling = {});

}  // namespace depcompare
