#pragma once
// The localized texts of the process, by message ID and locale.
#include <memory>
#include <stdexcept>
#include <string_view>

#include <fl/i18n/export.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/message_id.h>
#include <fl/i18n/ustring.h>

namespace fl::i18n {

/// No catalog of the locale, its language or English has the key.
class FL_I18N_EXPORT MessageNotFound : public std::runtime_error {
  public:
    MessageNotFound(const MessageID& id, const Locale& locale);

    [[nodiscard]] const MessageID& id() const noexcept { return *id_; }

  private:
    std::shared_ptr<const MessageID> id_;
};

/// A text passed to `add` is not JSON of the expected form; `what()` names the place and the fault.
class FL_I18N_EXPORT MalformedCatalog : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Threads: every operation is safe from any thread, also while others register.
class FL_I18N_EXPORT MessageCatalog {
  public:
    /// Looks in the locale, then in its language, then in English.
    ///
    /// Throws: MessageNotFound.
    [[nodiscard]] static ustring get_message(const MessageID& id, const Locale& locale);

    /// Registers {"catalog": {"key": "text", ...}, ...}; a text replaces the one with its ID.
    ///
    /// Throws: MalformedCatalog, InvalidLocaleName; then nothing is registered.
    static void add(std::string_view localeName, std::string_view utf8Json);

    /// As `add`, but existing texts stay: may be repeated, and called before or after `add`.
    static void addDefaults(std::string_view localeName, std::string_view utf8Json);

    /// Forgets every text.
    static void clear();
};

}  // namespace fl::i18n
