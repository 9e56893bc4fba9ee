#pragma once
// Base64 text of a compressed table.
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "output/output.h"

namespace depcompare {

/// Takes bytes piece by piece and keeps them compressed.
class PackedBytes final : public Sink {
  public:
    enum class Packing { plain, deflate };

    /// Deflate is the zlib format of RFC 1950; either is in Base64.
    struct Packed {
        Packing packing = Packing::plain;
        std::string letters;
    };

    PackedBytes();
    ~PackedBytes() override;

    void write(std::string_view bytes) override;
    void addByte(unsigned byte) {
        const char unit = static_cast<char>(byte);
        write({&unit, 1});
    }
    /// In groups of seven bits, the lowest first, each but the last with the highest bit set.
    void addNumber(std::size_t number);

    /// Returns: how many bytes were written.
    [[nodiscard]] std::size_t size() const { return size_; }

    /// Returns: everything that was written, plain if that is little.
    ///
    /// Requires: no call after this one.
    [[nodiscard]] Packed take();

  private:
    class Deflater;

    void spill();

    std::size_t size_ = 0;
    std::string waiting_;  // not compressed yet
    std::unique_ptr<Deflater> deflater_;
};

}  // namespace depcompare
