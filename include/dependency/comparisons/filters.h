#pragma once
// The filters of a comparison, and those that are on at first.
#include <variant>
#include <vector>

#include <comparisons/unchanged_filter.h>
#include <dependency/comparisons/export.h>

namespace dependency::comparisons {

/// Hides differences in properties only; files and dependencies that appear or disappear stay.
struct NonstructuralFilter {
    friend bool operator==(const NonstructuralFilter&, const NonstructuralFilter&) = default;
};

/// One filter.
using Filters = std::variant<::comparisons::UnchangedFilter, NonstructuralFilter>;

/// Returns: the filters that are on when a comparison opens: the non-structural filter.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT std::vector<Filters> getDefaultEnabledFilters();

}  // namespace dependency::comparisons
