#include "path_case.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace depcompare::fuzz {

namespace {

/// From one place of a document to another.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::size_t valueOf(char letter) {
    return static_cast<unsigned char>(letter - firstLetter) % letterCount;
}

bool isOfWord(char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return byte >= 0x80 || std::isalnum(byte) != 0 ||
           std::string_view("_-./@").find(letter) != std::string_view::npos;
}

/// Returns: the word at the place or else the next one, empty at the end if there is none.
Span wordAt(std::string_view text, std::size_t place) {
    while (place < text.size() && !isOfWord(text[place])) {
        ++place;
    }
    Span word{place, place};
    while (word.begin > 0 && isOfWord(text[word.begin - 1])) {
        --word.begin;
    }
    while (word.end < text.size() && isOfWord(text[word.end])) {
        ++word.end;
    }
    return word;
}

Span lineAt(std::string_view text, std::size_t place) {
    const std::size_t before = text.substr(0, place).rfind('\n');
    const std::size_t after = text.find('\n', place);
    return {before == std::string_view::npos ? 0 : before + 1,
            after == std::string_view::npos ? text.size() : after + 1};
}

/// Returns: the innermost object or array around the place, with its key.
std::optional<Span> elementAt(std::string_view text, std::size_t place) {
    std::size_t begin = place + 1;
    for (int open = 0; open < 1;) {
        if (begin == 0) {
            return std::nullopt;
        }
        const char letter = text[--begin];
        open += letter == '{' || letter == '[' ? 1 : 0;
        open -= (letter == '}' || letter == ']') && begin != place ? 1 : 0;
    }
    std::size_t end = begin;
    int open = 0;
    do {
        open += text[end] == '{' || text[end] == '[' ? 1 : 0;
        open -= text[end] == '}' || text[end] == ']' ? 1 : 0;
        ++end;
    } while (open > 0 && end < text.size());
    const std::size_t colon = text.substr(0, begin).find_last_not_of(" \n");
    if (colon != std::string_view::npos && colon > 1 && text[colon] == ':') {
        const std::size_t key = text.substr(0, colon - 1).rfind('"');
        begin = key == std::string_view::npos ? begin : key;
    }
    return Span{begin, end};
}

bool isJson(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \n");
    return first != std::string_view::npos && (text[first] == '{' || text[first] == '[');
}

Span pieceAt(std::string_view text, std::size_t place) {
    const auto element = isJson(text) ? elementAt(text, place) : std::nullopt;
    return element.value_or(lineAt(text, place));
}

std::string without(std::string text, Span piece) {
    if (isJson(text)) {
        // One of the commas around it goes, too.
        const std::size_t after = text.find_first_not_of(" \n", piece.end);
        if (after != std::string::npos && text[after] == ',') {
            piece.end = after + 1;
        } else if (const std::size_t before = text.find_last_not_of(" \n", piece.begin - 1);
                   piece.begin != 0 && before != std::string::npos && text[before] == ',') {
            piece.begin = before;
        }
    }
    return text.erase(piece.begin, piece.end - piece.begin);
}

std::string replacedEverywhere(std::string text, const std::string& word, const std::string& by) {
    for (std::size_t place = text.find(word); place != std::string::npos;
         place = text.find(word, place + by.size())) {
        text.replace(place, word.size(), by);
    }
    return text;
}

}  // namespace

PathCase PathCase::of(std::string_view bytes) {
    const std::size_t end = bytes.rfind('\0');
    if (end == std::string_view::npos) {
        return {.documents = std::string(bytes), .letters = {}};
    }
    return {.documents = std::string(bytes.substr(0, end)),
            .letters = std::string(bytes.substr(end + 1))};
}

std::string PathCase::left() const {
    return documents.substr(0, documents.find('\0'));
}

std::string PathCase::right() const {
    const std::size_t zero = documents.find('\0');
    std::string right = zero == std::string::npos ? documents : documents.substr(zero + 1);
    std::string_view rest(letters);
    rest.remove_prefix(std::min(settingLetters, rest.size()));
    for (std::size_t i = 0; i < mostEdits && rest.size() >= editLetters; ++i) {
        right = edited(std::move(right), rest.substr(0, editLetters));
        rest.remove_prefix(editLetters);
    }
    return right;
}

std::size_t PathCase::setting(std::size_t number, std::size_t choices) const {
    return number < std::min(settingLetters, letters.size()) ? valueOf(letters[number]) % choices
                                                             : 0;
}

std::string edited(std::string document, std::string_view letters) {
    if (document.empty()) {
        return document;
    }
    const auto placeOf = [&](std::size_t letter) {
        const std::size_t number =
            valueOf(letters[letter]) * letterCount + valueOf(letters[letter + 1]);
        return number % document.size();
    };
    const std::size_t one = placeOf(1);
    const std::size_t other = placeOf(3);
    const Span word = wordAt(document, one);
    const std::string text = document.substr(word.begin, word.end - word.begin);
    const std::string longer = text + static_cast<char>('a' + valueOf(letters[4]) % 26);
    const Span piece = pieceAt(document, one);
    std::string copy = document.substr(piece.begin, piece.end - piece.begin);
    if (isJson(document)) {
        copy += ',';
    }
    const std::size_t target = pieceAt(document, other).begin;
    enum Kind { replace, rename, renameEverywhere, leaveOut, insertCopy, move, kinds };
    switch (static_cast<Kind>(valueOf(letters[0]) % kinds)) {
        case replace: {
            const Span by = wordAt(document, other);
            return document.replace(word.begin, text.size(),
                                    document.substr(by.begin, by.end - by.begin));
        }
        case rename:
            return document.replace(word.begin, text.size(), longer);
        case renameEverywhere:
            return text.empty() ? document : replacedEverywhere(document, text, longer);
        case leaveOut:
            return without(std::move(document), piece);
        case insertCopy:
            return document.insert(target, copy);
        case move:
            if (target > piece.begin && target < piece.end) {
                return document;
            }
            document.insert(target, copy);
            return without(std::move(document),
                           target > piece.begin
                               ? piece
                               : Span{piece.begin + copy.size(), piece.end + copy.size()});
        case kinds:
            break;
    }
    return document;
}

}  // namespace depcompare::fuzz
