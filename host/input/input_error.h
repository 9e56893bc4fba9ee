#pragma once
// What is wrong with an input: the file, the line if known, and the problem, in one line.
#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

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

/// Names for a message, each once.
class QuotedNames {
  public:
    void add(std::string_view name);
    [[nodiscard]] bool empty() const { return names_.empty(); }
    /// Returns: the names in quotation marks, sorted and separated by commas; those that do not fit into a
    ///          message are three dots.
    [[nodiscard]] std::string text() const;

  private:
    std::set<std::string> names_;
};

}  // namespace depcompare
