#pragma once
// The language of a text, which decides on letter case and date style. A locale is a pointer to an
// entry that is made once per name and kept, so copying one and reading the global one cost nothing.
#include <stdexcept>
#include <string>
#include <string_view>

#include <fl/i18n/export.h>

namespace fl::i18n {

class FL_I18N_EXPORT InvalidLocaleName : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

class FL_I18N_EXPORT Locale {
  public:
    /// English.
    Locale() noexcept;

    /// Takes language[_Script][_REGION], with '-' for '_' and in any letter case. A codeset
    /// (".UTF-8") is ignored; of the modifiers ("@euro"), "latin" and "cyrillic" name the script
    /// and the others are ignored. "", "C" and "POSIX" are English.
    ///
    /// An unknown language is accepted and treated as English.
    ///
    /// Throws: InvalidLocaleName for any other shape.
    explicit Locale(std::string_view name);

    /// English until it is set.
    ///
    /// Threads: both are safe from any thread; reading is one atomic load.
    [[nodiscard]] static Locale global() noexcept;
    static void setGlobal(Locale locale) noexcept;

    /// In the canonical form: "de_DE", "zh_Hant_TW".
    [[nodiscard]] const std::string& name() const noexcept;
    [[nodiscard]] const std::string& language() const noexcept;

    /// Whether lower-casing maps A to Z to a to z and no other ASCII character (not in Turkish).
    [[nodiscard]] bool lowersAsciiPlainly() const noexcept;

    friend bool operator==(Locale a, Locale b) noexcept { return a.entry_ == b.entry_; }

  private:
    struct Entry;

    explicit Locale(const Entry& entry) noexcept : entry_(&entry) {}
    static const Entry& intern(std::string_view name);
    static const Entry& english() noexcept;

    const Entry* entry_;
};

}  // namespace fl::i18n
