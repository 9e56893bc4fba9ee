#include <fl/i18n/ustring.h>

#include <cstdint>
#include <new>
#include <stdexcept>

#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace fl::i18n {
namespace {

constexpr std::size_t longest = std::size_t{1} << 30;
constexpr UChar32 replacement = 0xfffd;

int32_t icuLength(std::size_t size) {
    if (size > longest) {
        throw std::length_error("A text is too long to be converted.");
    }
    return static_cast<int32_t>(size);
}

// Without a way out of the loop, so that compilers vectorise it.
template <class Char>
bool isAscii(std::basic_string_view<Char> text) {
    std::uint32_t seen = 0;
    for (const Char c : text) {
        seen |= static_cast<std::uint32_t>(c);
    }
    return (seen & ~std::uint32_t{0x7f}) == 0;
}

ustring lowerAscii(std::u16string_view text) {
    ustring result(text);
    for (char16_t& c : result) {
        const bool isUpper = c >= u'A' && c <= u'Z';
        c = static_cast<char16_t>(c | (isUpper ? 0x20 : 0));
    }
    return result;
}

ustring lowerByRules(std::u16string_view text, const Locale& locale) {
    const int32_t length = icuLength(text.size());
    ustring result(text.size(), u'\0');
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t needed = u_strToLower(result.data(), static_cast<int32_t>(result.size()),
                                            text.data(), length, locale.name().c_str(), &status);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) {
            throw std::bad_alloc();
        }
        result.resize(static_cast<std::size_t>(needed));
        if (status != U_BUFFER_OVERFLOW_ERROR) {
            return result;
        }
    }
}

}  // namespace

std::string ustring_to_utf8(std::u16string_view text) {
    if (isAscii(text)) {
        std::string result(text.size(), '\0');
        for (std::size_t i = 0; i < text.size(); ++i) {
            result[i] = static_cast<char>(text[i]);
        }
        return result;
    }
    std::string result;
    result.reserve(text.size() + text.size() / 2);
    for (std::size_t i = 0; i < text.size();) {
        UChar32 c = 0;
        U16_NEXT_OR_FFFD(text, i, text.size(), c);
        char bytes[U8_MAX_LENGTH] = {};
        std::size_t count = 0;
        U8_APPEND_UNSAFE(bytes, count, c);
        result.append(bytes, count);
    }
    return result;
}

std::string to_string(std::u16string_view text) {
    return ustring_to_utf8(text);
}

ustring utf8_to_ustring(std::string_view text) {
    if (isAscii(text)) {
        return {text.begin(), text.end()};
    }
    const int32_t length = icuLength(text.size());
    ustring result(text.size(), u'\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(result.data(), length, &written, text.data(), length, replacement, nullptr,
                         &status);
    result.resize(static_cast<std::size_t>(written));
    return result;
}

ustring to_lower(std::u16string_view text, const Locale& locale) {
    return locale.lowersAsciiPlainly() && isAscii(text) ? lowerAscii(text)
                                                        : lowerByRules(text, locale);
}

}  // namespace fl::i18n
