#pragma once
// UTF-16 text: conversions that take any input, and lower-casing.
#include <string>
#include <string_view>

#include <fl/i18n/export.h>
#include <fl/i18n/locale.h>

namespace fl::i18n {

using ustring = std::u16string;

/// UTF-8; an unpaired surrogate becomes U+FFFD.
[[nodiscard]] FL_I18N_EXPORT std::string ustring_to_utf8(std::u16string_view text);

/// Converts to the encoding of message IDs and logger names: UTF-8.
[[nodiscard]] FL_I18N_EXPORT std::string to_string(std::u16string_view text);

/// Each maximal ill-formed sequence of bytes becomes one U+FFFD.
///
/// Throws: std::length_error beyond 2^30 bytes.
[[nodiscard]] FL_I18N_EXPORT ustring utf8_to_ustring(std::string_view text);

/// Full Unicode lower-casing under `locale`; unpaired surrogates stay as they are.
///
/// Throws: std::length_error beyond 2^30 code units.
[[nodiscard]] FL_I18N_EXPORT ustring to_lower(std::u16string_view text,
                                              const Locale& locale = Locale::global());

}  // namespace fl::i18n
