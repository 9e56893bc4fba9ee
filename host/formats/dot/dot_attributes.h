#pragma once
// Which attributes of DOT tell how a graph is drawn, and not what it is.
#include <string_view>

namespace depcompare {

/// Returns: whether the attribute is one of Graphviz's for shapes, colours, places and the like.
[[nodiscard]] bool onlyDraws(std::string_view attribute);

}  // namespace depcompare
