#pragma once
// What happened at large, in statements that come before the tree; each report renders them.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <comparisons/edit_type.h>

#include "presentation/report.h"

namespace depcompare {

/// Words of ours, a text of a graph as its file has it, or that a dependency leads to what follows.
struct Phrase {
    enum class Kind : std::uint8_t { words, name, leadsTo };

    Kind kind = Kind::words;
    std::u16string text;
};

/// Phrases follow each other without a space of the renderer's.
struct Statement {
    std::optional<::comparisons::EditType> edit;  ///< of what it is about
    std::vector<Phrase> phrases;
};

struct Topic {
    std::string_view title;  ///< empty if it continues the topic before it
    std::vector<Statement> statements = {};
    std::size_t more = 0;       ///< how many further statements there would be
    std::size_t mostLines = 0;  ///< in a short text
    bool flows = false;         ///< whether several statements make a line
    bool isNews = false;        ///< to be seen even if others are folded
};

/// Returns: in a sentence or two, whether and how the graphs differ.
[[nodiscard]] std::string verdictOf(const Report& report);

/// Returns: the topics that have something to say, each with the statements that matter most first;
///          with all of them if the insights are full; without insights that of versions alone.
[[nodiscard]] std::vector<Topic> atLarge(const Report& report);

/// How to see what a short report leaves out.
inline constexpr std::string_view howToSeeMore = "--insights full";

}  // namespace depcompare
