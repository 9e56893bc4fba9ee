#include "formats/edge_data.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "input/input_error.h"

namespace depcompare {

void NamedEdgeData::set(std::size_t edge, std::string_view name, std::string_view value,
                        std::string_view shown) {
    constexpr std::size_t mostNamed = 20;
    const auto* const known =
        std::ranges::find_if(edgeData, [&](const auto& data) { return data.first == name; });
    if (known != std::end(edgeData)) {
        sink_.set(edge, known->second, value);
    } else if (ignored_.size() < mostNamed) {
        ignored_.insert(inQuotes(shown));
    }
}

void NamedEdgeData::warnOfIgnored(std::string_view what) const {
    if (!ignored_.empty()) {
        sink_.warn(fmt::format("dependencies have no properties; ignored {}: {}", what,
                               fmt::join(ignored_, ", ")));
    }
}

}  // namespace depcompare
