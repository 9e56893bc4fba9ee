#include <map>

#include <depcompare/messages/messages.h>
#include <fl/i18n/message_catalog.h>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/locale/encoding_utf.hpp>
#include <nlohmann/json.hpp>

namespace fl::i18n {
namespace {

std::string globalName = "en";
std::map<std::string, ustring> texts;  // by locale, a blank, and full ID

}  // namespace

[[gnu::weak]] void beforeCall() {}

Locale Locale::global() {
    beforeCall();
    return Locale(globalName);
}

void Locale::setGlobal(Locale locale) {
    globalName = locale.name();
}

const ustring& MessageCatalog::get_message(const MessageID& id, const Locale& locale) {
    beforeCall();
    for (const std::string& name : {locale.name(), std::string("en")}) {
        if (const auto found = texts.find(name + ' ' + id.full()); found != texts.end()) {
            return found->second;
        }
    }
    throw MessageNotFound();
}

void MessageCatalog::add(const std::string& locale, std::string_view json) {
    const auto catalogs = nlohmann::json::parse(json);
    for (const auto& [catalog, keys] : catalogs.items()) {
        for (const auto& [key, text] : keys.items()) {
            texts[locale + ' ' + catalog + ':' + key] = utf8_to_ustring(text.get<std::string>());
        }
    }
}

void MessageCatalog::clear() {
    texts.clear();
}

std::string ustring_to_utf8(std::u16string_view text) {
    beforeCall();
    return boost::locale::conv::utf_to_utf<char>(text.data(), text.data() + text.size());
}

std::string to_string(std::u16string_view text) {
    return ustring_to_utf8(text);
}

ustring utf8_to_ustring(std::string_view text) {
    return boost::locale::conv::utf_to_utf<char16_t>(text.data(), text.data() + text.size());
}

// Latin-1 and the Turkish I.
ustring to_lower(ustring text, const Locale& locale) {
    beforeCall();
    const bool turkish = locale.name() == "tr";
    for (char16_t& c : text) {
        if (c == u'I' && turkish) {
            c = u'\u0131';
        } else if ((c >= u'A' && c <= u'Z') || (c >= u'\u00c0' && c <= u'\u00de')) {
            c = static_cast<char16_t>(c + 0x20);
        }
    }
    return text;
}

ustring date_time::to_ustring(const boost::posix_time::ptime& time, DateFormat /*format*/) {
    beforeCall();
    return utf8_to_ustring(boost::posix_time::to_simple_string(time));
}

}  // namespace fl::i18n

void depcompare::messages::registerMessages() {
    fl::i18n::MessageCatalog::add("en", R"({
        "comparisons:commonweb": {"ParamName": "Name", "ParamValue": "Value"},
        "ORBITA:dependency:comparisons": {
            "AnalysisDetails": "Analysis details", "AnalysisTimestamp": "Analysis time",
            "DependencyType": "Dependency type", "FileProperty": "File property",
            "ImpactedComponent": "Impacted component", "RequiredComponent": "Required component",
            "checksum": "Checksum"}})");
}
