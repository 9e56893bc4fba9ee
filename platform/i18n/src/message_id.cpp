#include <fl/i18n/message_id.h>

#include <utility>

namespace fl::i18n {
namespace {

[[noreturn]] void refuse(const std::string& full) {
    throw MalformedMessageID(std::string("'").append(full) + "' is not a message ID (catalog:key)");
}

std::string join(std::string_view catalog, std::string_view key) {
    std::string full;
    full.reserve(catalog.size() + 1 + key.size());
    full.append(catalog).append(1, ':').append(key);
    if (catalog.empty() || key.empty()) {
        refuse(full);
    }
    return full;
}

}  // namespace

MessageID::MessageID(std::string full) : colon_(full.rfind(':')), full_(std::move(full)) {
    if (colon_ == std::string::npos || colon_ == 0 || colon_ + 1 == full_.size()) {
        refuse(full_);
    }
}

MessageID::MessageID(std::string_view catalog, std::string_view key)
    : colon_(catalog.size()), full_(join(catalog, key)) {}

}  // namespace fl::i18n
