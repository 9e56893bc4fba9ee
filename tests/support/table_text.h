#pragma once
// View models rendered as text, read back from their tables in the object model; filters as letters.
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <comparisons/stateful_edit.h>
#include <comparisons/view_model.h>
#include <comparisons/viewmodel/parameter_table.h>
#include <dependency/comparisons/filters.h>

namespace dependency::test {

/// "1 0 2 0": the four counters in their order.
[[nodiscard]] std::string textOf(const ::comparisons::DiffMetrics<2>& metrics);

/// A line of column labels, "Name | Value" with line feeds as "\n", then one line per entry: its edit
/// type, both sides as "name=value" or "-", and the submetrics, if any, in parentheses.
[[nodiscard]] std::string textOf(
    const ::comparisons::viewmodel::parameter::tessel::ParameterTable& table);

/// The tables of a view model of any kind, those of a combined one after each other.
[[nodiscard]] std::string tablesOf(const ::comparisons::ViewModel& viewModel);

/// `tablesOf` without the lines of column labels.
[[nodiscard]] std::string entriesOf(const ::comparisons::ViewModel& viewModel);

/// An edit by its mark: "=" and "~" have both sides, "<" the left one, ">" the right one, "-" none;
/// "~" alone is changed.
template <class T>
::comparisons::StatefulEdit<std::optional<T>, 2> markedEdit(char mark, const T& left,
                                                            const T& right) {
    return {mark == '>' || mark == '-' ? std::nullopt : std::optional(left),
            mark == '<' || mark == '-' ? std::nullopt : std::optional(right), mark == '~'};
}

/// U: the unchanged filter, N: the non-structural filter, R: a reset; in the order given. `shown`
/// is a view model or a filtered tree.
template <class Shown>
void applySteps(Shown& shown, std::string_view steps) {
    for (const char step : steps) {
        switch (step) {
            case 'U':
                shown.applyFilter(::comparisons::UnchangedFilter());
                break;
            case 'N':
                shown.applyFilter(comparisons::NonstructuralFilter());
                break;
            case 'R':
                shown.resetVisibility();
                break;
            default:
                throw std::invalid_argument("not a step: " + std::string(steps));
        }
    }
}

}  // namespace dependency::test
