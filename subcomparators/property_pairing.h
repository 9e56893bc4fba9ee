#pragma once
// What graph and node properties have in common once they have a displayed name.
#include <algorithm>
#include <vector>

#include <comparisons/side.h>
#include <dependency/comparisons/property_comparison.h>

namespace dependency::comparisons {

/// Pairs rows by name; of several of one side with one name the last survives.
template <class Owner>
[[nodiscard]] PropertyComparison<Owner> pairByName(std::vector<Property<Owner>> left,
                                                   std::vector<Property<Owner>> right) {
    using ::comparisons::Side;
    for (auto* rows : {&left, &right}) {
        if (!std::ranges::is_sorted(*rows, {}, &Property<Owner>::name)) {
            std::ranges::stable_sort(*rows, {}, &Property<Owner>::name);
        }
        const auto last =
            std::unique(rows->rbegin(), rows->rend(),
                        [](const auto& x, const auto& y) { return x.name == y.name; });
        rows->erase(rows->begin(), last.base());
    }
    std::vector<PropertyEdit<Owner>> edits;
    edits.reserve(std::max(left.size(), right.size()));
    auto l = left.begin();
    auto r = right.begin();
    while (l != left.end() || r != right.end()) {
        const int order = l == left.end() ? 1 : r == right.end() ? -1 : l->name.compare(r->name);
        PropertyEdit<Owner>& edit = edits.emplace_back();
        if (order <= 0) {
            edit[Side::left] = std::move(*l++);
        }
        if (order >= 0) {
            edit[Side::right] = std::move(*r++);
        }
        edit.setChanged(hasBothSides(edit) && edit[Side::left]->value != edit[Side::right]->value);
    }
    return PropertyComparison<Owner>(std::move(edits));
}

}  // namespace dependency::comparisons
