#pragma once
// The page without its report, as the build embeds it: template, style and scripts.
#include <cstdint>
#include <span>
#include <string_view>

namespace depcompare {

/// What comes from a report.
enum class PageSlot : std::uint8_t { none, title, changes, data };

struct PagePiece {
    std::string_view text;
    PageSlot next = PageSlot::none;  ///< what follows the text
};

[[nodiscard]] std::span<const PagePiece> embeddedPage() noexcept;

}  // namespace depcompare
