#include "formats/edge_data.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>
#include <system_error>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "input/input_error.h"

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
    constexpr std::size_t mostNamed = 20;
    const auto* const known =
        std::ranges::find_if(edgeData, [&](const auto& data) { return data.first == name; });
    if (known != std::end(edgeData)) {
        sink_.set(edge, known->second, value);
    } else if (ignored_.size() < mostNamed) {
        ignored_.insert(inQuotes(shown));
    }
}

void NamedEdgeData::setUnnamed(std::size_t edge, std::string_view value) {
    set(edge, isNumber(value) ? "weight" : "type", value, "weight");
}

void NamedEdgeData::warnOfIgnored(std::string_view what) const {
    if (!ignored_.empty()) {
        sink_.warn(fmt::format("dependencies have no properties; ignored {}: {}", what,
                               fmt::join(ignored_, ", ")));
    }
}

void FirstRow::take(std::string_view source, std::string_view target) {
    if (rows_++ == 0) {
        source_ = source;
        target_ = target;
    } else if (!isRelated_) {
        const auto isOfFirst = [&](std::string_view text) {
            return text == source_ || text == target_;
        };
        isRelated_ = isOfFirst(source) || isOfFirst(target);
    }
}

void FirstRow::warnOfHeader(GraphSink& sink) const {
    if (rows_ > 2 && !isRelated_) {
        sink.warn(fmt::format(
            "the first row, {} and {}, is read as data; a header names \"source\" and \"target\"",
            inQuotes(source_), inQuotes(target_)));
    }
}

std::string ignoredHyperedges(std::size_t count) {
    return fmt::format("ignored hyperedges: {}", count);
}

bool nameEnds(std::string_view source, std::string_view target) {
    const std::pair names(normalized(source), normalized(target));
    return names == std::pair<std::string, std::string>("source", "target") ||
           names == std::pair<std::string, std::string>("from", "to");
}

std::string normalized(std::string_view name) {
    std::string text(name);
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    std::ranges::transform(text, text.begin(), [](char letter) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    });
    return text;
}

}  // namespace depcompare
