#pragma once
// What a row shows of one side: a name and a value.
#include <memory>
#include <string>
#include <utility>

#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/graph/dependency.h>

namespace dependency::comparisons {

struct MakeViewModelParam {
    using Param = std::pair<std::u16string, std::u16string>;

    /// Returns: the names of the upstream and the downstream component, that of the node where a
    ///          component has none.
    [[nodiscard]] Param operator()(const std::shared_ptr<graph::Dependency>& dependency) const;
    [[nodiscard]] Param operator()(const GraphProperty& property) const;
    [[nodiscard]] Param operator()(const NodeProperty& property) const;
};

}  // namespace dependency::comparisons
