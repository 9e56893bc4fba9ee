#include "formats/first_row.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include <fmt/format.h>

#include "input/input_error.h"

namespace depcompare {

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
