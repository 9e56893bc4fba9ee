#include <fl/i18n/message_catalog.h>

#include <atomic>
#include <fstream>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fl::i18n {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;

class MessageCatalogTest : public testing::Test {
  protected:
    MessageCatalogTest() { MessageCatalog::clear(); }
    ~MessageCatalogTest() override {
        MessageCatalog::clear();
        std::filesystem::remove_all(folder_);
    }

    static std::string text(const char* id, const char* locale) {
        const auto message = MessageCatalog::find_message(MessageID(id), Locale(locale));
        return message ? ustring_to_utf8(*message) : "(none)";
    }

    const std::filesystem::path& folder() {
        std::filesystem::create_directories(folder_);
        return folder_;
    }

    void write(const char* name, std::string_view content) {
        std::ofstream(folder() / name, std::ios::binary) << content;
    }

  private:
    std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) /
        (std::string("catalogs_") + testing::UnitTest::GetInstance()->current_test_info()->name());
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

TEST_F(MessageCatalogTest, missingKeyAndMissingCatalogThrowTheSameTypeWithTheID) {
    MessageCatalog::add("en", R"({"c": {"k": "text"}})");
    for (const char* full : {"c:missing", "missing:k"}) {
        EXPECT_THAT([&] { (void)MessageCatalog::get_message(MessageID(full), Locale("tr")); },
                    ThrowsMessage<MessageNotFound>(HasSubstr(full)));
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

TEST_F(MessageCatalogTest, folderOverridesItsLocalesOrNamesTheFileAtFaultAndRegistersNothing) {
    MessageCatalog::add("en", R"({"c": {"a": "a", "b": "b"}})");
    write("en.json", R"({"c": {"a": "A"}})");
    write("de_AT.json", R"({"c": {"a": "Ä"}})");
    write("README.txt", "not a catalog");
    MessageCatalog::addFolder(folder());
    EXPECT_EQ(text("c:a", "en") + text("c:b", "en") + text("c:a", "de_AT"), "AbÄ");
    EXPECT_THROW(MessageCatalog::addFolder(folder() / "none"), std::filesystem::filesystem_error);

    write("de.json", R"({"c": {"k": "x"}})");
    write("tr.json", "{");
    EXPECT_THAT([&] { MessageCatalog::addFolder(folder()); },
                ThrowsMessage<MalformedCatalog>(
                    HasSubstr((folder() / "tr.json").string() + ": parse error")));
    write("tr.json", "{}");
    write("a note.json", "{}");
    EXPECT_THROW(MessageCatalog::addFolder(folder()), InvalidLocaleName);
    EXPECT_EQ(text("c:k", "de"), "(none)");
}

TEST_F(MessageCatalogTest, readersSeeOneTextOrTheOtherWhileOthersRegister) {
    MessageCatalog::add("en", R"({"c": {"k": "first text"}})");
    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;
    std::vector<std::jthread> readers;
    readers.reserve(3);
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            while (!stop) {
                const ustring message =
                    MessageCatalog::get_message(MessageID("c:k"), Locale("de_DE"));
                wrong += message == u"first text" || message == u"second text" ? 0 : 1;
            }
        });
    }
    for (int i = 0; i < 300; ++i) {
        MessageCatalog::add(
            "en", i % 2 == 0 ? R"({"c": {"k": "second text"}})" : R"({"c": {"k": "first text"}})");
    }
    stop = true;
    readers.clear();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace fl::i18n
