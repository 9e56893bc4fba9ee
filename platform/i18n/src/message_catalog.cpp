#include <fl/i18n/message_catalog.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <string_view>
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
        Messages& kept = existing == Existing::replaced ? additions : messages;
        kept.reserve(messages.size() + additions.size());
        // From here on nothing needs memory.
        kept.merge(existing == Existing::replaced ? messages : additions);
        if (existing == Existing::replaced) {
            messages.swap(additions);
        }
    }

    std::shared_mutex mutex;
    std::unordered_map<std::string, Messages> byLocale;
};

[[noreturn]] void refuse(std::string_view place, std::string_view problem) {
    throw MalformedCatalog(std::string(place).append(": ").append(problem));
}

/// Takes messages while their text is parsed: the parser's own values need memory to be destroyed.
class MessageEvents final : public nlohmann::json::json_sax_t {
  public:
    explicit MessageEvents(std::string_view place) : place_(place) {}

    [[nodiscard]] Messages& messages() { return messages_; }

    bool null() override { refuseValue(); }
    bool boolean(bool /*is*/) override { refuseValue(); }
    bool number_integer(std::int64_t /*number*/) override { refuseValue(); }
    bool number_unsigned(std::uint64_t /*number*/) override { refuseValue(); }
    bool number_float(double /*number*/, const std::string& /*text*/) override { refuseValue(); }
    bool binary(nlohmann::json::binary_t& /*bytes*/) override { refuseValue(); }
    bool start_array(std::size_t /*elements*/) override { refuseValue(); }
    bool end_array() override { return true; }

    bool start_object(std::size_t /*elements*/) override {
        if (depth_ == 2) {
            refuseValue();
        }
        ++depth_;
        return true;
    }
    bool key(std::string& name) override {
        (depth_ == 1 ? catalog_ : key_) = name;
        return true;
    }
    bool string(std::string& text) override {
        if (depth_ != 2) {
            refuseValue();
        }
        if (catalog_.empty() || key_.empty()) {
            refuse(place_, "'" + catalog_ + ":" + key_ + "' has an empty side");
        }
        messages_.insert_or_assign(MessageID(catalog_, key_), utf8_to_ustring(text));
        return true;
    }
    bool end_object() override {
        --depth_;
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::json::exception& error) override {
        // The parser's own tag in front, "[json.exception...] ", says nothing to a reader.
        const std::string_view what = error.what();
        const std::size_t tagEnd = what.find("] ");
        refuse(place_, tagEnd == std::string_view::npos ? what : what.substr(tagEnd + 2));
    }

  private:
    [[noreturn]] void refuseValue() const {
        if (depth_ == 0) {
            refuse(place_, "not an object of catalogs");
        }
        if (depth_ == 1) {
            refuse(place_, "catalog '" + catalog_ + "' is not an object of keys and texts");
        }
        refuse(place_, "'" + catalog_ + ":" + key_ + "' is not a text");
    }

    std::string_view place_;
    Messages messages_;
    std::string catalog_;
    std::string key_;
    int depth_ = 0;
};

void addText(std::string_view localeName, std::string_view utf8Json, Existing existing) {
    const Locale locale(localeName);
    const std::string place = std::string("messages for '").append(localeName).append("'");
    MessageEvents events(place);
    nlohmann::json::sax_parse(utf8Json, &events);
    Store::instance().merge(locale.name(), std::move(events.messages()), existing);
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
