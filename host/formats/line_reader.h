#pragma once
// Reads text line by line, for formats that are made of lines.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "draft/graph_draft.h"
#include "draft/graph_sink.h"
#include "input/input.h"

namespace depcompare {

/// Returns: the text without a carriage return at its end.
[[nodiscard]] std::string_view withoutReturn(std::string_view line);

class LineReader {
  public:
    /// A line may have `longest` bytes; by default, what fits an ID, a name and a few values.
    explicit LineReader(Input& input, std::optional<std::size_t> longest = {});

    /// Returns: the next line without its line feed, and without a byte order mark; nothing at the
    ///          end. Valid until the next call.
    /// Throws:  `InputError` for what is not UTF-8, zero bytes, lines that are too long, and what
    ///          reading the input throws.
    [[nodiscard]] std::optional<std::string_view> next();
    /// Returns: the number of the line that `next` returned last, from 1.
    [[nodiscard]] std::size_t line() const { return line_; }
    [[noreturn]] void fail(std::string_view problem) const;

  private:
    bool refill();

    Input& input_;
    std::size_t longest_;
    std::vector<char> piece_;
    std::size_t position_ = 0;
    std::size_t end_ = 0;
    std::size_t line_ = 0;
    std::string text_;
};

/// What readers of lines have in common: lines in, a graph out.
class LineGraphReader {
  public:
    LineGraphReader(const LineGraphReader&) = delete;
    LineGraphReader& operator=(const LineGraphReader&) = delete;

  protected:
    explicit LineGraphReader(Input& input)
        : lines_(input), sink_(input.name(), input.limits(), [this] { return lines_.line(); }) {}
    ~LineGraphReader() = default;

    /// Calls `take` with every line, without its line break, and `end` after the last one.
    template <class Take, class End>
    [[nodiscard]] GraphDraft readLines(const Take& take, const End& end) {
        while (const auto line = lines_.next()) {
            take(withoutReturn(*line));
        }
        end();
        return sink_.finish();
    }

    LineReader lines_;
    GraphSink sink_;
};

/// Returns: the lines that are whole among the first bytes of an input, without line breaks; the
///          last one only if these are all the bytes.
[[nodiscard]] std::vector<std::string_view> wholeLines(std::string_view firstBytes);

/// Returns: the words between blanks and tabs, as far as one that begins with `#`.
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view line);

}  // namespace depcompare
