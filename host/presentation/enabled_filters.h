#pragma once
// Which filters are on, and what they are called.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <dependency/comparisons/filters.h>

namespace depcompare {

using dependency::comparisons::Filters;

/// In the order in which they are applied, the unchanged filter before the non-structural one, and
/// without repetition.
using EnabledFilters = std::vector<Filters>;

/// Returns: the names by which filters can be asked for, sorted.
[[nodiscard]] std::vector<std::string> filterNames();

/// Returns: the filter's name, one of `filterNames()`.
[[nodiscard]] std::string_view nameOf(const Filters& filter);

/// Returns: what people call it, as in "the non-structural filter".
[[nodiscard]] std::string_view titleOf(const Filters& filter);

/// Returns: what it hides, in words.
[[nodiscard]] std::string_view hiddenThingsOf(const Filters& filter);

/// Requires: `names` from `filterNames()`, in any order.
[[nodiscard]] EnabledFilters filtersNamed(const std::vector<std::string>& names);

/// Returns: all filters, in order.
[[nodiscard]] const EnabledFilters& allFilters();

/// Returns: every choice of filters, the empty one first. Bit i of a choice's place in the list says
///          whether it contains the i-th of all filters.
[[nodiscard]] std::vector<EnabledFilters> allChoicesOfFilters();

/// Returns: the place of `filters` among all choices.
[[nodiscard]] std::size_t placeOfChoice(const EnabledFilters& filters);

/// Returns: whether properties and components are asked for, not structure alone.
[[nodiscard]] bool showDetails(const EnabledFilters& filters);

/// Returns: the filters that are on by default.
[[nodiscard]] EnabledFilters defaultFilters();

}  // namespace depcompare
