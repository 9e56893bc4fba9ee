#pragma once
// Insights found the slow and literal way, to hold the library's against.
#include <memory>
#include <string>

#include <dependency/graph/graph.h>

namespace dependency::test {

/// What `allInsights` makes of two graphs whose dependencies of the type "call" are soft.
[[nodiscard]] std::string referenceInsights(const std::shared_ptr<const graph::Graph>& left,
                                            const std::shared_ptr<const graph::Graph>& right,
                                            std::size_t depth);

}  // namespace dependency::test
