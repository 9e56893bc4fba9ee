#include "reports/page/packed_bytes.h"

#include <zlib.h>

#include <array>
#include <new>
#include <stdexcept>

#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>

namespace depcompare {

namespace {

constexpr std::size_t pieceBytes = 1U << 16U;
constexpr std::size_t littleBytes = 1U << 10U;

std::string base64(const std::string& bytes) {
    using namespace boost::archive::iterators;
    using Letters = base64_from_binary<transform_width<std::string::const_iterator, 6, 8>>;
    std::string letters(Letters(bytes.begin()), Letters(bytes.end()));
    letters.append((4 - letters.size() % 4) % 4, '=');
    return letters;
}

}  // namespace

class PackedBytes::Deflater {
  public:
    Deflater() {
        if (::deflateInit(&stream_, Z_DEFAULT_COMPRESSION) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() { ::deflateEnd(&stream_); }

    void add(std::string& bytes, int flush) {
        stream_.next_in = reinterpret_cast<Bytef*>(bytes.data());
        stream_.avail_in = static_cast<uInt>(bytes.size());
        std::array<char, pieceBytes> piece;
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(piece.data());
            stream_.avail_out = static_cast<uInt>(piece.size());
            if (::deflate(&stream_, flush) == Z_STREAM_ERROR) {
                throw std::logic_error("zlib refuses to compress");
            }
            packed_.append(piece.data(), piece.size() - stream_.avail_out);
        } while (stream_.avail_out == 0);
        bytes.clear();
    }

    [[nodiscard]] const std::string& packed() const { return packed_; }

  private:
    z_stream stream_{};
    std::string packed_;
};

PackedBytes::PackedBytes() = default;
PackedBytes::~PackedBytes() = default;

void PackedBytes::write(std::string_view bytes) {
    size_ += bytes.size();
    while (waiting_.size() + bytes.size() > pieceBytes) {
        const std::size_t room = pieceBytes - waiting_.size();
        waiting_.append(bytes.substr(0, room));
        bytes.remove_prefix(room);
        spill();
    }
    waiting_.append(bytes);
}

void PackedBytes::addNumber(std::size_t number) {
    while (number >= 0x80) {
        addByte((number & 0x7FU) | 0x80U);
        number >>= 7U;
    }
    addByte(static_cast<unsigned>(number));
}

PackedBytes::Packed PackedBytes::take() {
    if (!deflater_ && waiting_.size() <= littleBytes) {
        return {.packing = Packing::plain, .letters = base64(waiting_)};
    }
    if (!deflater_) {
        deflater_ = std::make_unique<Deflater>();
    }
    deflater_->add(waiting_, Z_FINISH);
    return {.packing = Packing::deflate, .letters = base64(deflater_->packed())};
}

void PackedBytes::spill() {
    if (!deflater_) {
        deflater_ = std::make_unique<Deflater>();
    }
    deflater_->add(waiting_, Z_NO_FLUSH);
}

}  // namespace depcompare
