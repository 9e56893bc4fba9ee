#include "expat_parse.h"

#include <expat.h>

#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

namespace depcompare::bench {

namespace {

struct Totals {
    std::size_t elements = 0;
    std::size_t characters = 0;
};

extern "C" {
void startElement(void* totals, const XML_Char* /*name*/, const XML_Char** /*attributes*/) {
    ++static_cast<Totals*>(totals)->elements;
}
void endElement(void* /*totals*/, const XML_Char* /*name*/) {}
void characterData(void* totals, const XML_Char* /*text*/, int length) {
    static_cast<Totals*>(totals)->characters += static_cast<std::size_t>(length);
}
}

}  // namespace

std::size_t parseWithExpat(const std::filesystem::path& file) {
    constexpr int blockSize = 64 * 1024;
    std::ifstream in(file, std::ios::binary);
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), &XML_ParserFree);
    Totals totals;
    XML_SetUserData(parser.get(), &totals);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characterData);
    for (bool last = false; !last;) {
        void* const block = XML_GetBuffer(parser.get(), blockSize);
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        in.read(static_cast<char*>(block), blockSize);
        last = !in;
        const auto length = static_cast<int>(in.gcount());
        if (XML_ParseBuffer(parser.get(), length, last ? 1 : 0) != XML_STATUS_OK) {
            throw std::runtime_error("cannot parse " + file.string());
        }
    }
    return totals.elements;
}

}  // namespace depcompare::bench
