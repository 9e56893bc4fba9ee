#pragma once
// Bytes in few letters: what a text file holds of a large table.
#include <memory>
#include <string>
#include <string_view>

namespace depcompare {

/// Takes bytes as they come and keeps them compressed.
class PackedBytes {
  public:
    enum class Packing { plain, deflate };

    /// Deflate is the zlib format of RFC 1950; either is in Base64.
    struct Packed {
        Packing packing = Packing::plain;
        std::string letters;
    };

    PackedBytes();
    PackedBytes(const PackedBytes&) = delete;
    PackedBytes& operator=(const PackedBytes&) = delete;
    ~PackedBytes();

    void add(std::string_view bytes);
    void addByte(unsigned byte) {
        const char unit = static_cast<char>(byte);
        add({&unit, 1});
    }
    /// In groups of seven bits, the lowest first, each but the last with the highest bit set.
    void addNumber(std::size_t number);

    /// Returns: everything that was added, plain where it is little; call it once, at the end.
    [[nodiscard]] Packed take();

  private:
    class Deflater;

    void spill();

    std::string waiting_;  // not compressed yet
    std::unique_ptr<Deflater> deflater_;
};

}  // namespace depcompare
