#pragma once
// View models rendered as text, read back from their tables in the object model.
#include <string>

#include <comparisons/view_model.h>
#include <comparisons/viewmodel/parameter_table.h>

namespace dependency::test {

/// "1 0 2 0": the four counters in their order.
[[nodiscard]] std::string textOf(const ::comparisons::DiffMetrics<2>& metrics);

/// A line of column labels, "Name | Value" with line feeds as "\n", then a line an entry: its edit
/// type, both sides as "name=value" or "-", and the submetrics in parentheses where it has any. An
/// entry of another shape shows as a line that no test expects.
[[nodiscard]] std::string textOf(
    const ::comparisons::viewmodel::parameter::tessel::ParameterTable& table);

/// The tables of a view model of any kind, those of a combined one after each other.
[[nodiscard]] std::string tablesOf(const ::comparisons::ViewModel& viewModel);

/// `tablesOf` without the lines of column labels.
[[nodiscard]] std::string entriesOf(const ::comparisons::ViewModel& viewModel);

}  // namespace dependency::test
