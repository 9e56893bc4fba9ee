#include "output/json_writer.h"

#include <utility>

#include <fl/i18n/ustring.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

/// Returns: the character that the text begins with, and its bytes.
std::pair<char32_t, std::size_t> firstOf(std::string_view utf8) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned lead = byteAt(0);
    const std::size_t bytes = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = bytes == 1 ? lead : lead & (0xFFU >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        character = (character << 6U) | (byteAt(i) & 0x3FU);
    }
    return {character, bytes};
}

}  // namespace

void JsonWriter::key(std::string_view name) {
    separate();
    quote(name);
    output_.write(":");
    afterKey_ = true;
}

void JsonWriter::text(std::string_view utf8) {
    separate();
    quote(utf8);
}

void JsonWriter::text(std::u16string_view text) {
    separate();
    quote(fl::i18n::ustring_to_utf8(text));
}

void JsonWriter::number(std::uint64_t number) {
    separate();
    output_.print("{}", number);
}

void JsonWriter::real(double number) {
    separate();
    output_.print("{}", number);
}

void JsonWriter::boolean(bool value) {
    separate();
    output_.write(value ? "true" : "false");
}

void JsonWriter::null() {
    separate();
    output_.write("null");
}

void JsonWriter::begin(char bracket) {
    separate();
    output_.write({&bracket, 1});
    first_ = true;
}

void JsonWriter::end(char bracket) {
    output_.write({&bracket, 1});
    first_ = false;
}

void JsonWriter::separate() {
    if (!afterKey_ && !first_) {
        output_.write(",");
    }
    if (lineBreak_) {
        output_.write("\n");
    }
    first_ = false;
    afterKey_ = false;
    lineBreak_ = false;
}

void JsonWriter::quote(std::string_view utf8) {
    output_.write("\"");
    std::size_t plain = 0;  // where the part that needs no escape begins
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte >= 0x7F) {
            const auto [character, bytes] = firstOf(utf8.substr(i));
            if (isUnsafe(character)) {
                output_.write(utf8.substr(plain, i - plain));
                for (const char16_t unit : fl::i18n::utf8_to_ustring(utf8.substr(i, bytes))) {
                    output_.print("\\u{:04x}", static_cast<unsigned>(unit));
                }
                plain = i + bytes;
            }
            i += bytes - 1;
            continue;
        }
        // CI systems obey ##[...] and ##name[...] anywhere in a line.
        const bool isSecondHash = byte == '#' && i != 0 && utf8[i - 1] == '#';
        if (byte >= 0x20 && byte != '"' && byte != '\\' && !isSecondHash) {
            continue;
        }
        output_.write(utf8.substr(plain, i - plain));
        if (byte < 0x20 || isSecondHash) {
            output_.print("\\u{:04x}", byte);
        } else {
            output_.print("\\{}", utf8[i]);
        }
        plain = i + 1;
    }
    output_.write(utf8.substr(plain));
    output_.write("\"");
}

}  // namespace depcompare
