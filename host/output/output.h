#pragma once
// Where a report goes: in large pieces, to standard output, a file or anything else.
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace depcompare {

/// Collects text and passes it on in large pieces.
class Output {
  public:
    using Write = std::function<void(std::string_view)>;

    explicit Output(Write write) : write_(std::move(write)) {}

    void write(std::string_view text) {
        buffer_.append(text.data(), text.data() + text.size());
        flushWhenLarge();
    }

    template <class... Arguments>
    void print(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        fmt::format_to(std::back_inserter(buffer_), format, std::forward<Arguments>(arguments)...);
        flushWhenLarge();
    }

    void flush() {
        write_({buffer_.data(), buffer_.size()});
        buffer_.clear();
    }

  private:
    static constexpr std::size_t pieceBytes = 1U << 16U;

    void flushWhenLarge() {
        if (buffer_.size() >= pieceBytes) {
            flush();
        }
    }

    Write write_;
    fmt::memory_buffer buffer_;
};

/// Writes to an open file, all of it.
///
/// Throws: `std::system_error`, whose text begins with `name`.
void writeAll(int file, std::string_view name, std::string_view text);

/// A file that appears under its name whole or not at all: it is written beside the target, and
/// takes its place, its permissions kept, in `commit`. What is no regular file is written directly.
class OutputFile {
  public:
    /// Throws: `std::system_error`, as all operations do.
    explicit OutputFile(std::string path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without a commit nothing stays.
    ~OutputFile();

    [[nodiscard]] const std::string& path() const noexcept { return path_; }
    /// Requires: no commit yet.
    [[nodiscard]] bool isRegular() const noexcept { return !temporary_.empty(); }

    void write(std::string_view text) { writeAll(file_, path_, text); }
    void commit();

  private:
    void openBeside(unsigned permissions);
    [[noreturn]] void fail() const;

    std::string path_;
    std::string target_;     // the path without its symbolic links
    std::string temporary_;  // empty where the target is written directly
    int file_ = -1;
};

}  // namespace depcompare
