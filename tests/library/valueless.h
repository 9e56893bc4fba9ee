#pragma once
// An item that holds nothing, as only an exception at the wrong moment leaves it.
#include <dependency/comparisons/item.h>

namespace dependency::test {

inline comparisons::Item valuelessItem() {
    struct Thrower {
        operator const std::shared_ptr<graph::Node>&() const { throw 0; }
    };
    comparisons::Item item;
    try {
        item.emplace<comparisons::ParallelDependencies>(
            Thrower(), Thrower(), comparisons::ParallelDependencies::Dependencies());
    } catch (int) {
    }
    return item;
}

}  // namespace dependency::test
