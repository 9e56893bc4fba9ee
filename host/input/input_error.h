#pragma once
// What is wrong with an input: the file, the line if known, and the problem, in one line.
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace depcompare {

class InputError : public std::runtime_error {
  public:
    /// `line` counts from 1; 0 if unknown.
    InputError(std::string_view source, std::size_t line, std::string_view problem);
};

/// So many bytes of an input, about, are repeated by one message.
inline constexpr std::size_t mostRepeatedBytes = 200;

/// Returns: the text in quotation marks; one of more than `most` bytes is shortened in the middle. Two
///          texts fit into a message.
[[nodiscard]] std::string inQuotes(std::string_view text, std::size_t most = mostRepeatedBytes / 2);

/// Returns: the texts, separated by commas; those that do not fit into a message are three dots.
[[nodiscard]] std::string listed(const std::vector<std::string>& texts);

}  // namespace depcompare
