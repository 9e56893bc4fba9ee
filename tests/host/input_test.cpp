#include "input/input.h"

#include <zlib.h>

#include <string>

#include <gtest/gtest.h>

#include "input/input_error.h"

namespace depcompare {
namespace {

std::string packed(std::string text) {
    std::string result(compressBound(static_cast<uLong>(text.size())) + 32, '\0');
    z_stream stream{};
    constexpr int gzip = 16;
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, MAX_WBITS + gzip, 8, Z_DEFAULT_STRATEGY), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

std::string contentOf(const std::string& bytes, const Limits& limits = {}) {
    std::string content;
    try {
        Input input = Input::fromText("in", bytes, limits);
        std::string piece(1000, '\0');
        for (std::size_t count = input.read(piece); count != 0; count = input.read(piece)) {
            content.append(piece, 0, count);
        }
    } catch (const InputError& error) {
        return error.what();
    }
    return content;
}

TEST(Input, whatGzipCompressedIsUncompressed) {
    std::string large;
    for (int i = 0; i < 100'000; ++i) {
        large += std::to_string(i);
    }
    std::string damaged = packed("some text that is packed");
    damaged[damaged.size() - 6] ^= 1;
    const std::pair<std::string, std::string> cases[] = {
        {packed("text"), "text"},
        {packed(""), ""},
        {packed(large), large},
        {packed(large) + packed("") + packed("more"), large + "more"},
        {damaged, "in: corrupt gzip data: incorrect data check"},
        {packed("text") + "junk", "in: corrupt gzip data: incorrect header check"},
    };
    for (const auto& [bytes, expected] : cases) {
        EXPECT_TRUE(contentOf(bytes) == expected) << contentOf(bytes).substr(0, 100);
    }
    const std::string whole = packed("some text that is packed");
    for (std::size_t length = 2; length < whole.size(); ++length) {
        EXPECT_EQ(contentOf(whole.substr(0, length)), "in: truncated gzip data") << length;
    }
}

TEST(Input, theLimitOfBytesCountsThemUncompressed) {
    const Limits limits{.bytes = 100'000};
    const std::string expected = "in: larger than 100000 bytes (--max-input-bytes)";
    EXPECT_EQ(contentOf(packed(std::string(8'000'000, ' ')), limits), expected);
    EXPECT_EQ(contentOf(std::string(100'001, ' '), limits), expected);
    EXPECT_EQ(contentOf(std::string(100'000, ' '), limits).size(), 100'000U);
}

}  // namespace
}  // namespace depcompare
