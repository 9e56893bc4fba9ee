#include "input/gunzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <span>
#include <utility>

#include <fmt/format.h>

#include "input/input_error.h"

namespace depcompare {

namespace {

class Gunzip final : public ByteSource {
  public:
    Gunzip(std::unique_ptr<ByteSource> packed, std::string name)
        : packed_(std::move(packed)), name_(std::move(name)) {
        constexpr int gzipOnly = 16;
        if (inflateInit2(&stream_, MAX_WBITS + gzipOnly) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Gunzip() override { inflateEnd(&stream_); }

    std::size_t read(std::span<char> target) override {
        constexpr std::size_t most = std::numeric_limits<uInt>::max();
        target = target.first(std::min(target.size(), most));
        stream_.next_out = reinterpret_cast<Bytef*>(target.data());
        stream_.avail_out = static_cast<uInt>(target.size());
        while (stream_.avail_out == target.size() && prepare()) {
            unpack();
        }
        return target.size() - stream_.avail_out;
    }

  private:
    /// Returns: false at the end of the last member.
    bool prepare() {
        if (stream_.avail_in == 0) {
            stream_.next_in = reinterpret_cast<Bytef*>(piece_.data());
            stream_.avail_in = static_cast<uInt>(packed_->read(piece_));
        }
        if (stream_.avail_in == 0 && !betweenMembers_) {
            fail("truncated gzip data");
        }
        return stream_.avail_in != 0;
    }

    void unpack() {
        if (std::exchange(betweenMembers_, false)) {
            inflateReset(&stream_);
        }
        const int status = inflate(&stream_, Z_NO_FLUSH);
        if (status == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        betweenMembers_ = status == Z_STREAM_END;
        if (status != Z_OK && status != Z_STREAM_END) {
            fail(fmt::format("corrupt gzip data: {}",
                             stream_.msg != nullptr ? stream_.msg : "a dictionary is missing"));
        }
    }

    [[noreturn]] void fail(std::string_view problem) const { throw InputError(name_, 0, problem); }

    std::unique_ptr<ByteSource> packed_;
    std::string name_;
    z_stream stream_{};
    std::array<char, 1U << 16U> piece_{};
    bool betweenMembers_ = false;
};

}  // namespace

bool looksPacked(std::string_view firstBytes) {
    return firstBytes.starts_with("\x1F\x8B");
}

std::unique_ptr<ByteSource> unpackedBytes(std::unique_ptr<ByteSource> packed, std::string name) {
    return std::make_unique<Gunzip>(std::move(packed), std::move(name));
}

}  // namespace depcompare
