#include "formats/edge_data.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <system_error>

#include <fmt/format.h>

namespace depcompare {

namespace {

bool isNumber(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error != std::errc::invalid_argument && last == end;
}

}  // namespace

void NamedEdgeData::set(std::size_t edge, std::string_view name, std::string_view value,
                        std::string_view shown) {
    const auto* const known =
        std::ranges::find_if(edgeData, [&](const auto& data) { return data.first == name; });
    if (known != std::end(edgeData)) {
        sink_.set(edge, known->second, value);
    } else {
        ignored_.add(shown);
    }
}

void NamedEdgeData::setUnnamed(std::size_t edge, std::string_view value) {
    set(edge, isNumber(value) ? "weight" : "type", value, "weight");
}

void NamedEdgeData::warnOfIgnored(std::string_view what) const {
    if (!ignored_.empty()) {
        sink_.warn(
            fmt::format("dependencies have no properties; ignored {}: {}", what, ignored_.text()));
    }
}

std::string ignoredHyperedges(std::size_t count) {
    return fmt::format("ignored hyperedges: {}", count);
}

}  // namespace depcompare
