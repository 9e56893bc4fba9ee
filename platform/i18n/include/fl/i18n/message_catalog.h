#pragma once
// The localized texts of the process, by message ID and locale.
#include <filesystem>
#include <memory>
#include <optional>
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

/// A text that was to be registered is not the JSON that is expected; says where and what.
class FL_I18N_EXPORT MalformedCatalog : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Threads: every operation is safe from any thread, reading while others register included.
class FL_I18N_EXPORT MessageCatalog {
  public:
    /// Looks in the locale, then in its language, then in English.
    ///
    /// Throws: MessageNotFound.
    [[nodiscard]] static ustring get_message(const MessageID& id, const Locale& locale);

    /// As `get_message`, empty where there is no message.
    [[nodiscard]] static std::optional<ustring> find_message(const MessageID& id,
                                                             const Locale& locale);

    /// Registers {"catalog": {"key": "text", ...}, ...}; a text replaces one that is there.
    ///
    /// Throws: MalformedCatalog, InvalidLocaleName; then nothing is registered.
    static void add(std::string_view localeName, std::string_view utf8Json);

    /// As `add`, but a text that is there stays: may be repeated, and before or after overrides.
    static void addDefaults(std::string_view localeName, std::string_view utf8Json);

    /// As `add` for every file LOCALE.json in `folder`, without its subfolders.
    ///
    /// Throws: as `add`, naming the file, and std::filesystem::filesystem_error; then nothing is
    ///         registered.
    static void addFolder(const std::filesystem::path& folder);

    /// Forgets every text.
    static void clear();
};

}  // namespace fl::i18n
