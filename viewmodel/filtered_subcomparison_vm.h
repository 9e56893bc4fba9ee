#pragma once
// The view model that this library's factories create: what its rows show, and which of them the
// non-structural filter leaves visible.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <dependency/comparisons/filters.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/graph/dependency.h>

#include "viewmodel/filtered_param_vm.h"

namespace dependency::comparisons {

/// Returns: the message `key` of the catalog "ORBITA:dependency:comparisons" in the global locale.
/// Throws:  what the catalog throws for a missing one.
[[nodiscard]] std::u16string label(std::string_view key);

/// Turns one side of a row into a name and a value.
struct MakeViewModelParam {
    using Param = std::pair<std::u16string, std::u16string>;

    /// Returns: the names of the upstream and the downstream component, or of the node if the
    ///          component has none.
    [[nodiscard]] Param operator()(const std::shared_ptr<graph::Dependency>& dependency) const;

    template <class Owner>
    [[nodiscard]] Param operator()(const Property<Owner>& property) const {
        return {property.name, property.value};
    }
};

/// Additions and removals stay.
template <class Edit>
[[nodiscard]] auto rowRule(const NonstructuralFilter& /*filter*/,
                           std::type_identity<Edit> /*rows*/) {
    return [](const Edit& edit, const ::comparisons::DiffMetrics<2>* /*nested*/) {
        return !hasBothSides(edit);
    };
}

/// Additions and removals stay, except of the analysis time of a graph and the checksum of a file.
template <class Owner>
[[nodiscard]] auto rowRule(const NonstructuralFilter& /*filter*/,
                           std::type_identity<PropertyEdit<Owner>> /*rows*/) {
    constexpr bool ofGraph = std::is_same_v<Owner, graph::Graph>;
    return [hidden = label(ofGraph ? "AnalysisTimestamp" : "checksum")](
               const PropertyEdit<Owner>& edit, const ::comparisons::DiffMetrics<2>* /*nested*/) {
        return !hasBothSides(edit) &&
               std::ranges::none_of(::comparisons::sides, [&](::comparisons::Side side) {
                   return edit[side] && edit[side]->name == hidden;
               });
    };
}

template <class Edit>
class FilteredSubcomparisonVM final
    : public ::comparisons::viewmodel::FilteredParamVM<Filters, Edit, MakeViewModelParam, 2> {
  public:
    using ::comparisons::viewmodel::FilteredParamVM<Filters, Edit, MakeViewModelParam,
                                                    2>::FilteredParamVM;
};

}  // namespace dependency::comparisons
