#pragma once
// The names by which the data of edges go in formats that have no names of their own for them.
#include <utility>

#include "draft/graph_draft.h"

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

}  // namespace depcompare
