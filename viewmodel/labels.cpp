#include "viewmodel/labels.h"

#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>

namespace dependency::comparisons {

std::u16string label(std::string_view key) {
    return fl::i18n::MessageCatalog::get_message(
        fl::i18n::MessageID("ORBITA:dependency:comparisons", key), fl::i18n::Locale::global());
}

}  // namespace dependency::comparisons
