#pragma once
// Insights as lines of text, with IDs for numbers.
#include <string>

#include <dependency/insight/areas.h>
#include <dependency/insight/causes.h>
#include <dependency/insight/cycles.h>
#include <dependency/insight/reach.h>

namespace dependency::test {

[[nodiscard]] std::string textOf(const insight::LinkGraph& graph, const insight::Cycles& cycles);
[[nodiscard]] std::string textOf(const insight::LinkGraph& graph, const insight::Reach& reach);
[[nodiscard]] std::string textOf(const insight::LinkGraph& graph, const insight::Areas& areas);
[[nodiscard]] std::string textOf(const insight::LinkGraph& graph,
                                 const insight::OtherNodes& others);
[[nodiscard]] std::string textOf(const insight::LinkGraph& graph, const insight::Causes& causes);

}  // namespace dependency::test
