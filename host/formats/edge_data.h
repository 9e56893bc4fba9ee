#pragma once
// The names by which the data of edges go in formats that have no names of their own for them.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "draft/graph_draft.h"
#include "draft/graph_sink.h"
#include "input/input_error.h"

namespace depcompare {

inline constexpr const char* upstreamComponentName = "upstream_component";
inline constexpr const char* downstreamComponentName = "downstream_component";
inline constexpr const char* upstreamComponentTypeName = "upstream_component_type";
inline constexpr const char* downstreamComponentTypeName = "downstream_component_type";

inline constexpr std::pair<const char*, EdgeColumn> edgeData[] = {
    {"type", EdgeColumn::type},
    {upstreamComponentName, EdgeColumn::upstreamComponent},
    {downstreamComponentName, EdgeColumn::downstreamComponent},
    {upstreamComponentTypeName, EdgeColumn::upstreamComponentType},
    {downstreamComponentTypeName, EdgeColumn::downstreamComponentType},
};

/// Sets data of edges by these names, and remembers the names of others, which are ignored.
class NamedEdgeData {
  public:
    explicit NamedEdgeData(GraphSink& sink) : sink_(sink) {}

    /// `shown` is what messages call the name.
    void set(std::size_t edge, std::string_view name, std::string_view value,
             std::string_view shown);
    /// Sets what comes after source and target without a name: a number is a weight, which is ignored,
    /// anything else the type.
    void setUnnamed(std::size_t edge, std::string_view value);
    /// Warns of the names that were ignored, if any; `what` they are: "columns".
    void warnOfIgnored(std::string_view what) const;

  private:
    GraphSink& sink_;
    QuotedNames ignored_;
};

/// Returns: a warning about edges of more than two ends.
[[nodiscard]] std::string ignoredHyperedges(std::size_t count);

}  // namespace depcompare
