#pragma once
// The parts of the report for programs that come from view models and from the ledger.
#include <string_view>

#include <comparisons/diff_metrics.h>
#include <comparisons/edit_type.h>
#include <comparisons/side.h>
#include <comparisons/view_model.h>

#include "output/json_writer.h"
#include "presentation/ledger.h"

namespace depcompare {

/// Returns: the name of the member that holds what belongs to `side`.
[[nodiscard]] std::string_view memberOf(::comparisons::Side side);

/// Returns: the edit's name in reports.
[[nodiscard]] std::string_view nameOf(::comparisons::EditType type);

void writeJsonMetrics(const ::comparisons::DiffMetrics<2>& metrics, JsonWriter& json);

/// Writes the columns and rows of a view model as of its last commit.
void writeJsonDetail(const PresentedTree::ViewModel& viewModel, JsonWriter& json);

void writeJsonLedger(const Ledger& ledger, JsonWriter& json);

}  // namespace depcompare
