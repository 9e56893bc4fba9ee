#pragma once
// Filters written as letters, so that a table of cases shows their order.
#include <stdexcept>
#include <string>
#include <string_view>

#include <dependency/comparisons/filters.h>

namespace dependency::test {

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
