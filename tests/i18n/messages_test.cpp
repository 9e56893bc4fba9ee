#include <depcompare/messages/messages.h>

#include <fstream>
#include <set>

#include <fl/i18n/message_catalog.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace depcompare::messages {
namespace {

using fl::i18n::Locale;
using fl::i18n::MessageCatalog;
using fl::i18n::MessageID;

const char* const locales[] = {"de", "en", "ja", "tr"};

nlohmann::json messagesOf(const std::string& locale) {
    std::ifstream file(MESSAGES_FOLDER "/" + locale + ".json");
    return nlohmann::json::parse(file);
}

std::set<std::string> idsIn(const nlohmann::json& messages) {
    std::set<std::string> ids;
    for (const auto& [catalog, keys] : messages.items()) {
        for (const auto& [key, text] : keys.items()) {
            EXPECT_NE(text, "") << catalog << ' ' << key;
            ids.insert(MessageID(catalog, key).full());
        }
    }
    return ids;
}

TEST(Messages, everyLocaleHasEveryKey) {
    const std::set<std::string> english = idsIn(messagesOf("en"));
    EXPECT_EQ(english.size(), 9U);
    for (const char* locale : locales) {
        EXPECT_EQ(idsIn(messagesOf(locale)), english) << locale;
    }
}

TEST(Messages, registeredTextsAreThoseOfTheFiles) {
    MessageCatalog::clear();
    registerMessages();
    for (const char* locale : locales) {
        const nlohmann::json messages = messagesOf(locale);
        for (const auto& [catalog, keys] : messages.items()) {
            for (const auto& [key, text] : keys.items()) {
                const auto found =
                    MessageCatalog::get_message(MessageID(catalog, key), Locale(locale));
                EXPECT_EQ(fl::i18n::ustring_to_utf8(found), text) << locale << ' ' << key;
            }
        }
    }
    MessageCatalog::clear();
}

}  // namespace
}  // namespace depcompare::messages
