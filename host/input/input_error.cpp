#include "input/input_error.h"

#include <fmt/format.h>

namespace depcompare {

namespace {

std::string located(std::string_view source, std::size_t line, std::string_view problem) {
    return line == 0 ? fmt::format("{}: {}", source, problem)
                     : fmt::format("{}:{}: {}", source, line, problem);
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

InputError::InputError(std::string_view source, std::size_t line, std::string_view problem)
    : std::runtime_error(located(source, line, problem)) {}

std::string inQuotes(std::string_view text) {
    constexpr std::size_t longest = 120;
    if (text.size() <= longest) {
        return fmt::format("\"{}\"", text);
    }
    std::size_t head = longest / 2;
    while (head > 0 && continuesCharacter(text[head])) {
        --head;
    }
    std::size_t tail = text.size() - longest / 2;
    while (tail < text.size() && continuesCharacter(text[tail])) {
        ++tail;
    }
    return fmt::format("\"{}...{}\"", text.substr(0, head), text.substr(tail));
}

}  // namespace depcompare
