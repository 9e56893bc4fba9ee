#pragma once
// The attributes of DOT that say how a graph is drawn, not what it is.
#include <string_view>

namespace depcompare {

/// Returns: whether the attribute is one of Graphviz's for shapes, colours, places and the like.
[[nodiscard]] bool onlyDraws(std::string_view attribute);

}  // namespace depcompare
