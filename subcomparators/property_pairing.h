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
        std::ranges::stable_sort(*rows, {}, name);
    }
    std::vector<PropertyEdit<Property>> edits;
    edits.reserve(left.size() + right.size());
    auto l = left.begin();
    auto r = right.begin();
    while (l != left.end() || r != right.end()) {
        const bool takesLeft = r == right.end() || (l != left.end() && l->name <= r->name);
        const std::u16string next = takesLeft ? l->name : r->name;
        PropertyEdit<Property> edit;
        for (; l != left.end() && l->name == next; ++l) {
            edit[::comparisons::Side::left] = std::move(*l);
        }
        for (; r != right.end() && r->name == next; ++r) {
            edit[::comparisons::Side::right] = std::move(*r);
        }
        if (hasBothSides(edit)) {
            edit.setChanged(edit[::comparisons::Side::left]->value !=
                            edit[::comparisons::Side::right]->value);
        }
        edits.push_back(std::move(edit));
    }
    return edits;
}

}  // namespace dependency::comparisons
