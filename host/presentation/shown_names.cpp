#include "presentation/shown_names.h"

#include <exception>
#include <new>

#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>
#include <fl/i18n/message_id.h>
#include <fl/i18n/ustring.h>

namespace depcompare {

namespace {

std::u16string messageFor(const std::string& messageKey, const std::u16string& key) {
    try {
        return fl::i18n::MessageCatalog::get_message(
            fl::i18n::MessageID("ORBITA:dependency:comparisons:" + messageKey),
            fl::i18n::Locale::global());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return key;  // Nothing has to be wrong: few keys have a message.
    }
}

}  // namespace

std::u16string shownNameOfFileProperty(const std::u16string& key) {
    return messageFor(fl::i18n::to_string(key), key);
}

std::u16string shownNameOfGraphProperty(const std::u16string& key) {
    return key == u"timestamp" ? messageFor("AnalysisTimestamp", key) : key;
}

}  // namespace depcompare
