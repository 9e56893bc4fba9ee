#include <algorithm>
#include <cctype>
#include <string_view>

#include "formats/dot/dot_reader.h"

namespace depcompare {

namespace {

std::string_view withoutComments(std::string_view text) {
    for (;;) {
        const std::size_t first = text.find_first_not_of(" \t\r\n");
        text.remove_prefix(std::min(first, text.size()));
        const bool block = text.starts_with("/*");
        if (!block && !text.starts_with("//") && !text.starts_with('#')) {
            return text;
        }
        const std::size_t end = text.find(block ? "*/" : "\n");
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + (block ? 2 : 1));
    }
}

bool takeWord(std::string_view& text, std::string_view word) {
    const auto isSame = [](char one, char other) {
        return std::tolower(static_cast<unsigned char>(one)) == other;
    };
    if (text.size() < word.size() ||
        !std::ranges::equal(text.substr(0, word.size()), word, isSame)) {
        return false;
    }
    text = withoutComments(text.substr(word.size()));
    return true;
}

}  // namespace

bool looksLikeDOT(std::string_view firstBytes) {
    if (firstBytes.starts_with("\xEF\xBB\xBF")) {
        firstBytes.remove_prefix(3);
    }
    std::string_view text = withoutComments(firstBytes);
    takeWord(text, "strict");
    return takeWord(text, "digraph") || takeWord(text, "graph");
}

}  // namespace depcompare
