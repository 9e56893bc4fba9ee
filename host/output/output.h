#pragma once
// Where a report goes: in large pieces, to standard output, a file or a pager.
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace depcompare {

/// Takes text as it comes.
///
/// Throws: `std::system_error` from every operation, with a text that begins with the sink's name.
class Sink {
  public:
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;

    virtual void write(std::string_view text) = 0;
    /// Ends the sink after everything was written.
    ///
    /// Requires: no call after this one.
    virtual void finish() {}
};

/// Collects text and passes it on to a sink in large pieces.
///
/// Lifetime: the sink outlives this.
class Output {
  public:
    explicit Output(Sink& sink) : sink_(sink) {}

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
        sink_.write({buffer_.data(), buffer_.size()});
        buffer_.clear();
    }

  private:
    static constexpr std::size_t pieceBytes = 1U << 16U;

    void flushWhenLarge() {
        if (buffer_.size() >= pieceBytes) {
            flush();
        }
    }

    Sink& sink_;
    fmt::memory_buffer buffer_;
};

/// Writes all of the text to an open file.
///
/// Throws: `std::system_error`, whose text begins with `name`.
void writeAll(int file, std::string_view name, std::string_view text);

class StandardOutput final : public Sink {
  public:
    void write(std::string_view text) override;
    [[nodiscard]] static bool isRegularFile();
};

}  // namespace depcompare
