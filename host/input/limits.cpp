#include "input/limits.h"

#include <fmt/format.h>

namespace depcompare {

std::string tooManyEdges(std::size_t most) {
    return fmt::format("more than {} edges (--max-edges)", most);
}

std::string tooLongText(const Limits& limits) {
    return fmt::format("text longer than {} bytes (--max-text-bytes)", limits.textBytes);
}

std::string tooDeep(std::string_view what, const Limits& limits) {
    return fmt::format("{} nested deeper than {} (--max-nesting)", what, limits.nestingDepth);
}

}  // namespace depcompare
