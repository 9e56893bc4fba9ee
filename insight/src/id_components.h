#pragma once
// IDs as components between separators.
#include <string_view>

namespace dependency::insight {

/// Returns: the last component.
[[nodiscard]] inline std::u16string_view lastComponent(std::u16string_view id,
                                                       std::u16string_view separator) {
    const auto at = id.rfind(separator);
    return at == id.npos ? id : id.substr(at + separator.size());
}

/// Returns: what is before the last component and its separator; empty if there is nothing.
[[nodiscard]] inline std::u16string_view folder(std::u16string_view id,
                                                std::u16string_view separator) {
    const auto at = id.rfind(separator);
    return at == id.npos ? std::u16string_view() : id.substr(0, at);
}

/// Returns: the first `depth` components, a separator at the very beginning taken as part of the
///          first one.
[[nodiscard]] inline std::u16string_view leadingComponents(std::u16string_view text,
                                                           std::u16string_view separator,
                                                           std::size_t depth) {
    std::size_t end = text.starts_with(separator) ? separator.size() : 0;
    for (; depth != 0; --depth) {
        const auto at = text.find(separator, end);
        if (at == text.npos) {
            return text;
        }
        end = at + separator.size();
    }
    return text.substr(0, end - separator.size());
}

}  // namespace dependency::insight
