#pragma once
// The bytes of one input, from a file, standard input or memory, decompressed if necessary.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "input/byte_source.h"
#include "input/limits.h"

namespace depcompare {

class Input {
  public:
    /// Opens the file, or standard input for "-". Messages call it `name`.
    ///
    /// Throws: `InputError` if it cannot be opened.
    [[nodiscard]] static Input open(const std::string& path, const std::string& name,
                                    const Limits& limits = {});
    /// The same, named by its path.
    [[nodiscard]] static Input open(const std::string& path, const Limits& limits = {});
    [[nodiscard]] static Input fromText(std::string name, std::string text,
                                        const Limits& limits = {});

    /// Returns: the name for messages and people.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] const Limits& limits() const noexcept { return limits_; }

    /// Requires: nothing was read yet.
    /// Returns: the first bytes, at most 64 KiB, which stay to be read; valid until the next `read`.
    /// Throws:  as `read`.
    [[nodiscard]] std::string_view peek();

    /// Returns: how many bytes were put into `target`; 0 at the end.
    /// Throws:  `InputError` for a failed read, corrupt gzip data, and more bytes than the limit,
    ///          which counts them decompressed.
    [[nodiscard]] std::size_t read(std::span<char> target);

  private:
    Input(std::string name, std::unique_ptr<ByteSource> source, const Limits& limits)
        : name_(std::move(name)), limits_(limits), source_(std::move(source)) {}
    void fill(std::size_t wanted);

    std::string name_;
    Limits limits_;
    std::unique_ptr<ByteSource> source_;
    bool opened_ = false;   // whether the first bytes were examined
    std::string buffered_;  // the first bytes, until they are read
    std::size_t taken_ = 0;
    std::uint64_t total_ = 0;
};

}  // namespace depcompare
