#pragma once
// Which rows the non-structural filter leaves visible.
#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>

#include <comparisons/diff_metrics.h>
#include <comparisons/stateful_edit.h>
#include <dependency/comparisons/filters.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

#include "viewmodel/labels.h"

namespace dependency::comparisons {

/// Additions and removals stay.
template <class Edit>
[[nodiscard]] auto rowRule(const NonstructuralFilter& /*filter*/,
                           std::type_identity<Edit> /*rows*/) {
    return [](const Edit& edit, const ::comparisons::DiffMetrics<2>* /*nested*/) {
        return !hasBothSides(edit);
    };
}

template <class Edit>
[[nodiscard]] auto additionsAndRemovalsExcept(std::u16string name) {
    return [name = std::move(name)](const Edit& edit,
                                    const ::comparisons::DiffMetrics<2>* /*nested*/) {
        return !hasBothSides(edit) &&
               std::ranges::none_of(::comparisons::sides, [&](::comparisons::Side side) {
                   return edit[side] && edit[side]->name == name;
               });
    };
}

/// The analysis time never stays.
[[nodiscard]] inline auto rowRule(const NonstructuralFilter& /*filter*/,
                                  std::type_identity<GraphPropertyEdit> /*rows*/) {
    return additionsAndRemovalsExcept<GraphPropertyEdit>(label("AnalysisTimestamp"));
}

/// The checksum never stays.
[[nodiscard]] inline auto rowRule(const NonstructuralFilter& /*filter*/,
                                  std::type_identity<NodePropertyEdit> /*rows*/) {
    return additionsAndRemovalsExcept<NodePropertyEdit>(label("checksum"));
}

}  // namespace dependency::comparisons
