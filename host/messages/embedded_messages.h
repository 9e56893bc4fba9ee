#pragma once
// The message files as they were when the program was built.
#include <span>
#include <string_view>

namespace depcompare::messages {

struct EmbeddedMessages {
    std::string_view localeName;
    std::string_view utf8Json;
};

[[nodiscard]] std::span<const EmbeddedMessages> embeddedMessages() noexcept;

}  // namespace depcompare::messages
