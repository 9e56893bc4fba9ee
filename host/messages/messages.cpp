#include <depcompare/messages/messages.h>

#include <fl/i18n/message_catalog.h>

#include "embedded_messages.h"

namespace depcompare::messages {

void registerMessages() {
    for (const EmbeddedMessages& messages : embeddedMessages()) {
        fl::i18n::MessageCatalog::addDefaults(messages.localeName, messages.utf8Json);
    }
}

}  // namespace depcompare::messages
