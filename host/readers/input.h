#pragma once
// The bytes of one input, from a file, standard input or memory.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "readers/limits.h"

namespace depcompare {

class Input {
  public:
    /// Opens the file, or standard input for "-".
    ///
    /// Throws: `InputError` where it cannot be opened.
    [[nodiscard]] static Input open(const std::string& path, const Limits& limits = {});
    [[nodiscard]] static Input fromText(std::string name, std::string text,
                                        const Limits& limits = {});

    Input(Input&& other) noexcept;
    Input& operator=(Input&&) = delete;
    ~Input();

    /// Returns: the name for messages and people.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] const Limits& limits() const noexcept { return limits_; }

    /// Returns: the first bytes, at most 4096, without taking them; valid until the next `read`.
    /// Requires: nothing was read yet.
    [[nodiscard]] std::string_view peek();

    /// Returns: how many bytes were put into `target`; 0 at the end.
    /// Throws:  `InputError` for a failed read and beyond the limit of bytes.
    [[nodiscard]] std::size_t read(std::span<char> target);

  private:
    Input(std::string name, int file, std::string buffered, const Limits& limits);
    [[nodiscard]] std::size_t readFile(std::span<char> target) const;

    std::string name_;
    Limits limits_;
    int file_;  // -1: what is buffered is all
    std::string buffered_;
    std::size_t taken_ = 0;
    std::uint64_t total_ = 0;
};

}  // namespace depcompare
