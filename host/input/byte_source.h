#pragma once
// Where the bytes of an input come from.
#include <memory>
#include <span>
#include <string>

namespace depcompare {

class ByteSource {
  public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /// Returns: how many bytes were put into `target`; 0 at the end.
    /// Throws:  `InputError`.
    [[nodiscard]] virtual std::size_t read(std::span<char> target) = 0;
};

/// Opens a file, or standard input for "-". Messages call it `name`.
///
/// Throws: `InputError` if it cannot be opened.
[[nodiscard]] std::unique_ptr<ByteSource> fileBytes(const std::string& path,
                                                    const std::string& name);

[[nodiscard]] std::unique_ptr<ByteSource> textBytes(std::string text);

}  // namespace depcompare
