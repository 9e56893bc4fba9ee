#pragma once
// What is wrong with an input: the file, the line if known, and the problem, in one line.
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace depcompare {

class InputError : public std::runtime_error {
  public:
    /// `line` counts from 1; 0 if unknown.
    InputError(std::string_view source, std::size_t line, std::string_view problem);
};

/// Returns: the text in quotation marks; a long one is shortened in the middle.
[[nodiscard]] std::string inQuotes(std::string_view text);

}  // namespace depcompare
