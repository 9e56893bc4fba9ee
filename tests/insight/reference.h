#pragma once
// Insights found the slow and literal way, to hold the library's against.
#include <dependency/insight/cycles.h>
#include <dependency/insight/reach.h>

namespace dependency::test {

/// What `findCycles` finds.
[[nodiscard]] insight::Cycles referenceCycles(const insight::LinkGraph& graph,
                                              insight::Strength strength);

/// What `findReach` finds without limits, but for the numbers of what is listed.
[[nodiscard]] insight::Reach referenceReach(const insight::LinkGraph& graph);

}  // namespace dependency::test
