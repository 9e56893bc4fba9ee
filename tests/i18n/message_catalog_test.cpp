#include <fl/i18n/message_catalog.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <vector>

#include <depcompare/messages/messages.h>
#include <fl/i18n/message_id.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace fl::i18n {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;

// Fallback texts are there in destructors of static objects.
const struct AtExit {
    ~AtExit() {
        MessageCatalog::add("en", R"({"c": {"k": "text"}})");
        if (MessageCatalog::get_message(MessageID("c:k"), Locale("de_AT")) != u"text") {
            std::abort();
        }
    }
} atExit;

TEST(MessageID, splitsAtItsLastColonAndHasTwoSides) {
    const MessageID id("ORBITA:dependency:comparisons:checksum");
    EXPECT_EQ(id.key(), "checksum");
    EXPECT_EQ(id, MessageID("ORBITA:dependency:comparisons", "checksum"));
    EXPECT_EQ(MessageID("catalog", "a:b"), MessageID("catalog:a:b"));
    EXPECT_EQ(MessageID("catalog", "a:b").full(), "catalog:a:b");
    for (const char* full : {"", "checksum", ":", ":key", "catalog:", "a:b:"}) {
        EXPECT_THROW((void)MessageID(full), MalformedMessageID) << full;
    }
}

class MessageCatalogTest : public testing::Test {
  protected:
    MessageCatalogTest() { MessageCatalog::clear(); }
    ~MessageCatalogTest() override { MessageCatalog::clear(); }

    static std::string text(const char* id, const char* locale) {
        try {
            return ustring_to_utf8(MessageCatalog::get_message(MessageID(id), Locale(locale)));
        } catch (const MessageNotFound& error) {
            EXPECT_THAT(error.what(), HasSubstr(id));
            return "(none)";
        }
    }
};

TEST_F(MessageCatalogTest, lookupFallsBackFromTheLocaleToItsLanguageToEnglish) {
    MessageCatalog::add("en", R"({"c": {"all": "en", "two": "en", "one": "en"}})");
    MessageCatalog::add("de", R"({"c": {"all": "de", "two": "de"}, "de only": {"k": "de"}})");
    MessageCatalog::add("de_AT", R"({"c": {"all": "de_AT"}})");
    const char* cases[][3] = {
        {"c:all", "de_AT", "de_AT"},  {"c:two", "de_AT", "de"},     {"c:one", "de_AT", "en"},
        {"c:all", "de_CH", "de"},     {"c:all", "de", "de"},        {"c:one", "de", "en"},
        {"c:all", "ja_JP", "en"},     {"c:all", "en_GB", "en"},     {"c:none", "de_AT", "(none)"},
        {"x:all", "de_AT", "(none)"}, {"de only:k", "de_AT", "de"}, {"de only:k", "en", "(none)"},
    };
    for (const auto& [id, locale, expected] : cases) {
        EXPECT_EQ(text(id, locale), expected) << id << ' ' << locale;
    }
}

TEST_F(MessageCatalogTest, laterTextsOverrideKeyByKeyAndDefaultsNever) {
    MessageCatalog::add("de", R"({"c": {"a": "1", "b": "1"}})");
    MessageCatalog::add("de", R"({"c": {"b": "2"}})");
    MessageCatalog::addDefaults("de", R"({"c": {"a": "3", "d": "3"}})");
    EXPECT_EQ(text("c:a", "de") + text("c:b", "de") + text("c:d", "de"), "123");
}

TEST_F(MessageCatalogTest, malformedTextNamesTheFaultAndRegistersNothing) {
    const std::pair<const char*, const char*> cases[] = {
        {"{\"c\": {\"k\": \"x\"},\n oops}", "line 2"},
        {"", "parse error"},
        {"[]", "not an object of catalogs"},
        {R"({"c": {"k": "x"}, "d": "text"})", "catalog 'd'"},
        {R"({"c": {"k": "x", "n": 1}})", "'c:n' is not a text"},
        {R"({"c": {"k": "x", "": "y"}})", "'c:' has an empty side"},
        {"{\"c\": {\"k\": \"\xff\"}}", "UTF-8"},
    };
    for (const auto& [json, fault] : cases) {
        EXPECT_THAT([text = json] { MessageCatalog::add("de", text); },
                    ThrowsMessage<MalformedCatalog>(
                        AllOf(HasSubstr("messages for 'de': "), HasSubstr(fault))));
        EXPECT_EQ(text("c:k", "de"), "(none)") << json;
    }
    EXPECT_THROW(MessageCatalog::add("deutsch", "{}"), InvalidLocaleName);
}

TEST_F(MessageCatalogTest, readersSeeOneTextOrTheOtherOrNoneWhileOthersRegisterAndForget) {
    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;
    std::vector<std::jthread> readers;
    readers.reserve(3);
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            while (!stop) {
                const std::string seen = text("c:k", "de_DE");
                wrong += seen == "first text" || seen == "second text" || seen == "(none)" ? 0 : 1;
            }
        });
    }
    for (int i = 0; i < 300; ++i) {
        MessageCatalog::add("en", R"({"c": {"k": "first text"}})");
        MessageCatalog::add("en", R"({"c": {"k": "second text"}})");
        MessageCatalog::clear();
    }
    stop = true;
    readers.clear();
    EXPECT_EQ(wrong, 0);
}

TEST_F(MessageCatalogTest, programRegistersTheTextsOfItsFilesWithEveryKeyInEveryLocale) {
    depcompare::messages::registerMessages();
    for (const char* locale : {"de", "en", "ja", "tr"}) {
        std::ifstream file(std::string(MESSAGES_FOLDER "/") + locale + ".json");
        const auto catalogs = nlohmann::json::parse(file);
        int count = 0;
        for (const auto& [catalog, keys] : catalogs.items()) {
            for (const auto& [key, expected] : keys.items()) {
                const std::string id = fl::i18n::MessageID(catalog, key).full();
                EXPECT_NE(expected, "") << id;
                EXPECT_EQ(text(id.c_str(), locale), expected) << locale << ' ' << id;
                EXPECT_NE(text(id.c_str(), "en"), "(none)") << id;
                ++count;
            }
        }
        EXPECT_EQ(count, 9) << locale;
    }
}

}  // namespace
}  // namespace fl::i18n
