#include "generated_text.h"

#include <algorithm>

namespace depcompare::bench {

namespace {

constexpr std::array<std::string_view, 24> words{
    "access", "buffer", "cache",  "common", "config", "control", "core",   "device",
    "engine", "event",  "filter", "format", "handle", "index",   "layout", "memory",
    "module", "net",    "parser", "query",  "render", "storage", "table",  "widget"};

// Mixes the bits of its arguments so that every result bit depends on all of them.
std::uint64_t mixed(std::uint64_t a, std::uint64_t b) {
    std::uint64_t bits = a * 0x9e3779b97f4a7c15U + b * 0xd1b54a32d192ed03U + 0x2545f4914f6cdd1dU;
    for (int round = 0; round < 2; ++round) {
        bits ^= bits >> 31U;
        bits *= 0xbf58476d1ce4e5b9U;
    }
    return bits ^ (bits >> 29U);
}

std::string_view word(std::uint64_t bits) {
    return words[bits % words.size()];
}

std::string digits(std::uint64_t value, unsigned base, std::size_t width) {
    constexpr std::string_view alphabet = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string text(width, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
        *digit = alphabet[value % base];
        value /= base;
    }
    return text;
}

// Words joined with `separator`, cut off at `length`.
std::string filler(std::uint64_t bits, std::size_t length, char separator) {
    std::string text;
    for (std::uint64_t i = 0; text.size() < length; ++i) {
        text += word(mixed(bits, i));
        text += separator;
    }
    text.resize(length);
    return text;
}

}  // namespace

// Two files share a stem and some sixteen a folder, and folders share their beginnings.
std::string fileID(std::uint32_t file) {
    const std::uint32_t stem = file / 2;
    const std::uint32_t folder = stem / 8;
    std::string id(word(mixed(folder / 64, 1)));
    for (const auto part : {mixed(folder / 8, 2), mixed(folder, 3)}) {
        id += '/';
        id += word(part);
    }
    id += digits(folder, 36, 3) + '/';
    const std::size_t length = 42 + mixed(stem, 4) % 19;  // with the longer extension
    const std::string number = digits(stem, 36, 4);
    id += filler(mixed(stem, 5), length - id.size() - number.size() - 4, '_') + number;
    return id + (file % 2 == 0 ? ".cpp" : ".h");
}

std::string fileName(std::string_view id) {
    return std::string(id.substr(id.rfind('/') + 1));
}

std::string componentName(std::uint32_t file, std::uint8_t component) {
    if (component == 0) {
        return {};
    }
    const std::uint64_t bits = mixed(file, component);
    return static_cast<char>('a' + component) + filler(bits, bits % 25, ':');
}

std::string_view componentType(std::uint8_t component) {
    constexpr std::array<std::string_view, 3> types{"class", "function", "macro"};
    return component == 0 ? std::string_view() : types[component % types.size()];
}

std::string propertyValue(std::uint32_t file, std::size_t property, bool changed) {
    const std::uint64_t bits = mixed(file, 16 + property);
    std::string value;
    switch (property) {
        case 0:
            value = digits(bits, 16, 16) + digits(mixed(bits, 1), 16, 16);
            break;
        case 2:
        case 5:
            value = digits(bits, 10, property);
            break;
        default:
            value = filler(bits, 3 + bits % 20, ' ');
    }
    return changed ? value + "2" : value;
}

}  // namespace depcompare::bench
