#pragma once
// Two documents that have most in common, and settings, from the bytes of a fuzzer.
//
//     LEFT                               compared with itself
//     LEFT \0 SETTINGS EDIT...           with itself after the edits
//     LEFT \0 RIGHT \0 SETTINGS EDIT...  with another document after the edits
//
// All after the last zero byte are printable letters: settingLetters of settings, then editLetters per
// edit. What is missing has its first value. So each document of a format is an input, too.
#include <cstddef>
#include <string>
#include <string_view>

namespace depcompare::fuzz {

inline constexpr std::size_t settingLetters = 8;
inline constexpr std::size_t editLetters = 5;
inline constexpr std::size_t mostEdits = 8;  ///< of one case; others do not count
inline constexpr char firstLetter = '!';
inline constexpr std::size_t letterCount = '~' - firstLetter + 1;

struct PathCase {
    std::string documents;  ///< LEFT, or LEFT \0 RIGHT
    std::string letters;    ///< of settings and edits

    [[nodiscard]] static PathCase of(std::string_view bytes);
    [[nodiscard]] std::string bytes() const { return documents + '\0' + letters; }

    [[nodiscard]] std::string left() const;
    [[nodiscard]] std::string right() const;
    /// Returns: one of `choices` values, 0 if the setting is missing.
    [[nodiscard]] std::size_t setting(std::size_t number, std::size_t choices) const;
};

/// Changes a document in a way that mostly keeps its syntax: a word is replaced, renamed in one place or
/// everywhere, or a piece (a line, an element of JSON) is left out, copied or moved.
///
/// Requires: `editLetters` letters.
[[nodiscard]] std::string edited(std::string document, std::string_view letters);

}  // namespace depcompare::fuzz
