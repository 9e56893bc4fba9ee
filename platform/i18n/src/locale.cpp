#include <fl/i18n/locale.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

#include <unicode/ustring.h>

namespace fl::i18n {
namespace {

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

bool allOf(std::string_view text, bool (*predicate)(char)) {
    return std::all_of(text.begin(), text.end(), predicate);
}

bool isLanguage(std::string_view part) {
    return (part.size() == 2 || part.size() == 3) && allOf(part, isLetter);
}
bool isScript(std::string_view part) {
    return part.size() == 4 && allOf(part, isLetter);
}
bool isRegion(std::string_view part) {
    return (part.size() == 2 && allOf(part, isLetter)) ||
           (part.size() == 3 && allOf(part, isDigit));
}

std::string mapped(std::string_view part, char (*map)(char)) {
    std::string result(part);
    std::transform(result.begin(), result.end(), result.begin(), map);
    return result;
}

std::string scriptOfModifier(std::string_view modifier) {
    const std::string name = mapped(modifier, lower);
    return name == "latin" ? "Latn" : name == "cyrillic" ? "Cyrl" : "";
}

std::vector<std::string_view> split(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find_first_of("_-", begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

struct CanonicalName {
    std::string language;
    std::string full;
};

CanonicalName canonicalName(std::string_view name) {
    const std::string_view base = name.substr(0, name.find_first_of(".@"));
    if (base == "C" || base == "POSIX" || name.empty()) {
        return {"en", "en"};
    }
    const std::vector<std::string_view> parts = split(base);
    auto part = parts.begin();
    std::string language;
    std::string script;
    std::string region;
    if (isLanguage(*part)) {
        language = mapped(*part++, lower);
    }
    if (part != parts.end() && isScript(*part)) {
        script = mapped(*part++, lower);
        script.front() = upper(script.front());
    } else if (const std::size_t at = name.find('@'); at != std::string_view::npos) {
        script = scriptOfModifier(name.substr(at + 1));
    }
    if (part != parts.end() && isRegion(*part)) {
        region = mapped(*part++, upper);
    }
    if (language.empty() || part != parts.end()) {
        throw InvalidLocaleName(std::string("'").append(name) + "' is not the name of a locale");
    }
    CanonicalName result = {language, language};
    for (const std::string& suffix : {script, region}) {
        if (!suffix.empty()) {
            result.full.append("_").append(suffix);
        }
    }
    return result;
}

// Asks ICU instead of naming languages, so that the fast path cannot disagree with the slow one.
bool asciiLowersPlainly(const std::string& locale) {
    std::u16string ascii;
    std::u16string expected;
    for (char c = 0; c < 0x7f; ++c) {
        ascii.push_back(static_cast<char16_t>(c));
        expected.push_back(static_cast<char16_t>(lower(c)));
    }
    std::array<char16_t, 256> lowered = {};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        u_strToLower(lowered.data(), static_cast<int32_t>(lowered.size()), ascii.data(),
                     static_cast<int32_t>(ascii.size()), locale.c_str(), &status);
    return U_SUCCESS(status) &&
           std::u16string_view(lowered.data(), static_cast<std::size_t>(length)) == expected;
}

}  // namespace

struct Locale::Entry {
    Entry() noexcept : name("en"), language("en"), lowersAsciiPlainly(true) {}
    explicit Entry(CanonicalName canonical)
        : name(std::move(canonical.full)),
          language(std::move(canonical.language)),
          lowersAsciiPlainly(asciiLowersPlainly(name)) {}

    const std::string name;
    const std::string language;
    const bool lowersAsciiPlainly;
};

const Locale::Entry& Locale::intern(std::string_view name) {
    // Never destroyed: locales stay valid in destructors that run while the process ends.
    static auto& mutex = *new std::mutex;
    static auto& entries = *new std::map<std::string, Entry>;
    CanonicalName canonical = canonicalName(name);
    if (canonical.full == english().name) {
        return english();
    }
    const std::lock_guard lock(mutex);
    const std::string key = canonical.full;
    return entries.try_emplace(key, std::move(canonical)).first->second;
}

const Locale::Entry& Locale::english() noexcept {
    // Takes no memory, and is never destroyed either.
    alignas(Entry) static std::array<std::byte, sizeof(Entry)> memory;
    static const Entry& entry = *new (memory.data()) Entry;
    return entry;
}

namespace {

// Constant-initialised, and null for English: readable before and after every other static.
std::atomic<const void*> globalEntry = nullptr;

}  // namespace

Locale::Locale() noexcept : entry_(&english()) {}
Locale::Locale(std::string_view name) : entry_(&intern(name)) {}

Locale Locale::global() noexcept {
    const void* entry = globalEntry.load(std::memory_order_acquire);
    return entry == nullptr ? Locale() : Locale(*static_cast<const Entry*>(entry));
}

void Locale::setGlobal(Locale locale) noexcept {
    globalEntry.store(locale.entry_, std::memory_order_release);
}

const std::string& Locale::name() const noexcept {
    return entry_->name;
}
const std::string& Locale::language() const noexcept {
    return entry_->language;
}
bool Locale::lowersAsciiPlainly() const noexcept {
    return entry_->lowersAsciiPlainly;
}

}  // namespace fl::i18n
