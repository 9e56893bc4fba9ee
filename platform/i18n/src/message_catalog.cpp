#include <fl/i18n/message_catalog.h>

#include <mutex>
#include <shared_mutex>
#include <string>
#include <unordered_map>
#include <utility>

#include <nlohmann/json.hpp>

namespace fl::i18n {
namespace {

using Messages = std::unordered_map<MessageID, ustring>;

enum class Existing { replaced, kept };

struct Store {
    // Never destroyed: messages can be read in destructors that run while the process ends.
    static Store& instance() {
        static auto& store = *new Store;
        return store;
    }

    const ustring* find(const std::string& localeName, const MessageID& id) const {
        const auto messages = byLocale.find(localeName);
        if (messages == byLocale.end()) {
            return nullptr;
        }
        const auto message = messages->second.find(id);
        return message == messages->second.end() ? nullptr : &message->second;
    }

    void merge(const std::string& localeName, Messages additions, Existing existing) {
        const std::unique_lock lock(mutex);
        Messages& messages = byLocale[localeName];
        if (existing == Existing::replaced) {
            messages.swap(additions);
        }
        messages.merge(additions);
    }

    std::shared_mutex mutex;
    std::unordered_map<std::string, Messages> byLocale;
};

[[noreturn]] void refuse(std::string_view place, std::string_view problem) {
    throw MalformedCatalog(std::string(place).append(": ").append(problem));
}

nlohmann::json parseJson(std::string_view place, std::string_view utf8Json) {
    try {
        return nlohmann::json::parse(utf8Json);
    } catch (const nlohmann::json::exception& error) {
        // The parser's own tag in front, "[json.exception...] ", says nothing to a reader.
        const std::string_view what = error.what();
        const std::size_t tagEnd = what.find("] ");
        refuse(place, tagEnd == std::string_view::npos ? what : what.substr(tagEnd + 2));
    }
}

Messages parse(std::string_view place, std::string_view utf8Json) {
    Messages result;
    const nlohmann::json root = parseJson(place, utf8Json);
    if (!root.is_object()) {
        refuse(place, "not an object of catalogs");
    }
    for (const auto& [catalog, keys] : root.items()) {
        if (!keys.is_object()) {
            refuse(place, "catalog '" + catalog + "' is not an object of keys and texts");
        }
        for (const auto& [key, text] : keys.items()) {
            if (catalog.empty() || key.empty() || !text.is_string()) {
                refuse(place, std::string("'").append(catalog).append(":").append(key) +
                                  (text.is_string() ? "' has an empty side" : "' is not a text"));
            }
            result.insert_or_assign(MessageID(catalog, key),
                                    utf8_to_ustring(text.get_ref<const std::string&>()));
        }
    }
    return result;
}

void addText(std::string_view localeName, std::string_view utf8Json, Existing existing) {
    const Locale locale(localeName);
    const std::string place = std::string("messages for '").append(localeName).append("'");
    Store::instance().merge(locale.name(), parse(place, utf8Json), existing);
}

}  // namespace

MessageNotFound::MessageNotFound(const MessageID& id, const Locale& locale)
    : std::runtime_error("There is no message '" + id.full() + "' for '" + locale.name() +
                         "' or in English."),
      id_(std::make_shared<const MessageID>(id)) {}

ustring MessageCatalog::get_message(const MessageID& id, const Locale& locale) {
    const std::string& english = Locale().name();
    Store& store = Store::instance();
    const std::shared_lock lock(store.mutex);
    const ustring* message = store.find(locale.name(), id);
    if (message == nullptr && locale.language() != locale.name()) {
        message = store.find(locale.language(), id);
    }
    if (message == nullptr && locale.language() != english) {
        message = store.find(english, id);
    }
    if (message == nullptr) {
        throw MessageNotFound(id, locale);
    }
    return *message;
}

void MessageCatalog::add(std::string_view localeName, std::string_view utf8Json) {
    addText(localeName, utf8Json, Existing::replaced);
}

void MessageCatalog::addDefaults(std::string_view localeName, std::string_view utf8Json) {
    addText(localeName, utf8Json, Existing::kept);
}

void MessageCatalog::clear() {
    Store& store = Store::instance();
    const std::unique_lock lock(store.mutex);
    store.byLocale.clear();
}

}  // namespace fl::i18n
