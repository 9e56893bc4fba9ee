#pragma once
// The address of a localized text: a catalog and a key in it.
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <fl/i18n/export.h>

namespace fl::i18n {

class FL_I18N_EXPORT MalformedMessageID : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

/// Two are equal if their full texts are, wherever these are split.
class FL_I18N_EXPORT MessageID {
  public:
    /// "catalog:key", split at the last colon.
    ///
    /// Throws: MalformedMessageID without a colon, or if either side of the last one is empty.
    explicit MessageID(std::string full);

    /// Throws: MalformedMessageID if one of them is empty.
    MessageID(std::string_view catalog, std::string_view key);

    [[nodiscard]] std::string_view catalog() const noexcept {
        return std::string_view(full_).substr(0, colon_);
    }
    [[nodiscard]] std::string_view key() const noexcept {
        return std::string_view(full_).substr(colon_ + 1);
    }
    [[nodiscard]] const std::string& full() const noexcept { return full_; }

    friend bool operator==(const MessageID& a, const MessageID& b) noexcept {
        return a.full_ == b.full_;
    }

  private:
    std::size_t colon_;
    std::string full_;
};

}  // namespace fl::i18n

template <>
struct std::hash<fl::i18n::MessageID> {
    std::size_t operator()(const fl::i18n::MessageID& id) const noexcept {
        return std::hash<std::string>()(id.full());
    }
};
