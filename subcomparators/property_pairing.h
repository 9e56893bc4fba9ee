#pragma once
// What graph and node properties have in common once they have a displayed name.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include <comparisons/stateful_edit.h>

namespace dependency::comparisons {

template <class Property>
using PropertyEdit = ::comparisons::StatefulEdit<std::optional<Property>, 2>;

/// Pairs rows by name; of several of one side with one name the last survives.
///
/// Order: by name.
template <class Property>
[[nodiscard]] std::vector<PropertyEdit<Property>> pairByName(std::vector<Property> left,
                                                             std::vector<Property> right) {
    const auto name = [](const Property& row) -> const auto& {
        return row.name;
    };
    for (auto* rows : {&left, &right}) {
        if (!std::ranges::is_sorted(*rows, {}, name)) {
            std::ranges::stable_sort(*rows, {}, name);
        }
        const auto last =
            std::unique(rows->rbegin(), rows->rend(),
                        [](const auto& x, const auto& y) { return x.name == y.name; });
        rows->erase(rows->begin(), last.base());
    }
    std::vector<PropertyEdit<Property>> edits;
    edits.reserve(std::max(left.size(), right.size()));
    auto l = left.begin();
    auto r = right.begin();
    while (l != left.end() || r != right.end()) {
        const int order = l == left.end() ? 1 : r == right.end() ? -1 : l->name.compare(r->name);
        PropertyEdit<Property>& edit = edits.emplace_back();
        if (order <= 0) {
            edit[::comparisons::Side::left] = std::move(*l++);
        }
        if (order >= 0) {
            edit[::comparisons::Side::right] = std::move(*r++);
        }
        edit.setChanged(hasBothSides(edit) && edit[::comparisons::Side::left]->value !=
                                                  edit[::comparisons::Side::right]->value);
    }
    return edits;
}

}  // namespace dependency::comparisons
