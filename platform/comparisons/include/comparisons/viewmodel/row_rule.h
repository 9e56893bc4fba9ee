#pragma once
// Which rows of a parameter table a filter leaves visible.
#include <type_traits>

#include <comparisons/diff_metrics.h>
#include <comparisons/stateful_edit.h>
#include <comparisons/unchanged_filter.h>

namespace comparisons {

/// A row rule is a callable of an edit and the metrics of its nested view model (null without one)
/// that returns whether the row stays. Each filter brings its rules as overloads of `rowRule` in
/// its own namespace; one is made per application of the filter.
template <class Edit>
[[nodiscard]] auto rowRule(const UnchangedFilter& /*filter*/, std::type_identity<Edit> /*rows*/) {
    return [](const Edit& edit, const DiffMetrics<2>* nested) {
        return !hasBothSides(edit) || edit.isChanged() || (nested != nullptr && !nested->areZero());
    };
}

}  // namespace comparisons
