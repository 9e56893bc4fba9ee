#pragma once
// The process's messages and locale, set for one test and put back after it.
#include <initializer_list>

#include <depcompare/messages/messages.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>

namespace dependency::test {

/// Starts from the program's own messages in English, and leaves them behind.
class Catalogs {
  public:
    Catalogs() { reset(); }
    ~Catalogs() { reset(); }
    Catalogs(const Catalogs&) = delete;
    Catalogs& operator=(const Catalogs&) = delete;

    static void reset() {
        fl::i18n::Locale::setGlobal(fl::i18n::Locale());
        fl::i18n::MessageCatalog::clear();
        depcompare::messages::registerMessages();
    }
};

}  // namespace dependency::test
