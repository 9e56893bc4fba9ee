#include "input/input_error.h"

#include <iterator>

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

std::string inQuotes(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return fmt::format("\"{}\"", text);
    }
    std::size_t head = most / 2;
    while (head > 0 && continuesCharacter(text[head])) {
        --head;
    }
    std::size_t tail = text.size() - most / 2;
    while (tail < text.size() && continuesCharacter(text[tail])) {
        ++tail;
    }
    return fmt::format("\"{}...{}\"", text.substr(0, head), text.substr(tail));
}

void QuotedNames::add(std::string_view name) {
    constexpr std::size_t most = 50;  // more than fit into a message
    names_.insert(inQuotes(name));
    if (names_.size() > most) {
        names_.erase(std::prev(names_.end()));
    }
}

std::string QuotedNames::text() const {
    std::string text;
    for (const std::string& name : names_) {
        const bool fits = text.size() + name.size() <= mostRepeatedBytes;
        text.append(text.empty() ? "" : ", ").append(fits ? name : "...");
        if (!fits) {
            break;
        }
    }
    return text;
}

}  // namespace depcompare
