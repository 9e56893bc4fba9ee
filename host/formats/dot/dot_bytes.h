#pragma once
// The bytes of a DOT file, for a parser that cannot report errors of reading them.
#include <cstddef>
#include <exception>
#include <span>
#include <string>

#include "input/input.h"

namespace depcompare {

/// Passes UTF-8 on and stops at anything else.
class DotBytes {
  public:
    explicit DotBytes(Input& input) : input_(input) {}

    /// Returns: how many bytes were put into `target`, of one line at most; 0 at the end, and from a
    ///          failure on.
    [[nodiscard]] int read(char* target, int size) noexcept;

    /// Returns: the line of the bytes that were read last, from 1.
    [[nodiscard]] std::size_t lineRead() const { return lineRead_; }

    /// Throws: the `InputError` that ended the reading, if any.
    void rethrowFailure() const;

  private:
    std::size_t checked(std::span<char> target);
    void refill();
    void check(bool isEnd);

    Input& input_;
    std::string piece_;
    std::size_t taken_ = 0;  // of the piece
    std::string rest_;       // of a character that the last piece cut
    std::size_t line_ = 1;   // of what is checked
    std::size_t lineRead_ = 1;
    bool lineEnded_ = false;  // what was read last
    bool begun_ = false;
    std::exception_ptr failure_;
};

}  // namespace depcompare
