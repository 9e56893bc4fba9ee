#include "output/json_writer.h"

#include <fl/i18n/ustring.h>

namespace depcompare {

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
