#pragma once
// What rows call properties, by the keys of these.
#include <string>

namespace depcompare {

/// Returns: the message for the key in the global locale, or else the key.
[[nodiscard]] std::u16string shownNameOfFileProperty(const std::u16string& key);
/// Returns: the same; the time of the analysis has a name, the catalogs none for other keys.
[[nodiscard]] std::u16string shownNameOfGraphProperty(const std::u16string& key);

}  // namespace depcompare
