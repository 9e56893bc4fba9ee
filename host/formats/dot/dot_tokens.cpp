#include "formats/dot/dot_tokens.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "input/input_error.h"
#include "input/limits.h"

namespace depcompare {

namespace {

constexpr std::string_view keywords[] = {"digraph", "edge", "graph", "node", "strict", "subgraph"};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

char lowered(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

// Whatever is not ASCII is a letter.
bool isLetter(char character) {
    const char lower = lowered(character);
    return (lower >= 'a' && lower <= 'z') || lower == '_' ||
           static_cast<unsigned char>(lower) >= 0x80U;
}

template <class Predicate>
std::size_t countLeading(std::string_view text, Predicate predicate) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, predicate) - text.begin());
}

/// Returns: how many bytes the number has with which the text begins; 0 if there is none.
std::size_t numberLength(std::string_view text) {
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    const std::size_t whole = countLeading(text.substr(sign), isDigit);
    const std::size_t end = sign + whole;
    if (end == text.size() || text[end] != '.') {
        return whole == 0 ? 0 : end;
    }
    const std::size_t fraction = countLeading(text.substr(end + 1), isDigit);
    return whole + fraction == 0 ? 0 : end + 1 + fraction;
}

std::string inSingleQuotes(std::string_view text) {
    std::string quoted = inQuotes(text);
    quoted.front() = '\'';
    quoted.back() = '\'';
    return quoted;
}

}  // namespace

// A file may be one line.
DotTokens::DotTokens(Input& input) : input_(input), lines_(input, input.limits().bytes) {
    advance();
}

void DotTokens::advance() {
    needsText_ = is("=") || is("->") || is("--");
    text_.clear();
    lineBefore_ = line_;
    const bool found = skipToToken();
    line_ = lines_.line();
    if (!found) {
        kind_ = Kind::end;
    } else if (rest_.front() == '"' || rest_.front() == '<') {
        readJoined();
    } else if (isLetter(rest_.front())) {
        readWord();
    } else if (const std::size_t length = numberLength(rest_)) {
        readNumber(length);
    } else {
        readMark();
    }
}

void DotTokens::take(std::string& target) {
    std::swap(target, text_);
    advance();
}

bool DotTokens::nextLine() {
    const auto line = lines_.next();
    rest_ = line.value_or(std::string_view());
    isAtBeginning_ = true;
    bytesRead_ += rest_.size() + 1;
    return line.has_value();
}

bool DotTokens::skipToToken() {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    for (;;) {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r"), rest_.size()));
        const bool beginsComment =
            rest_.starts_with("//") || (rest_.starts_with('#') && (isAtBeginning_ || !needsText_));
        if (rest_.starts_with("/*")) {
            skipComment();
        } else if (rest_.starts_with(byteOrderMark)) {
            rest_.remove_prefix(byteOrderMark.size());  // of a file that was appended
        } else if (!rest_.empty() && !beginsComment) {
            isAtBeginning_ = false;
            return true;
        } else if (!nextLine()) {
            return false;
        }
    }
}

void DotTokens::skipComment() {
    const std::size_t begin = lines_.line();
    rest_.remove_prefix(2);
    std::size_t end = 0;
    while ((end = rest_.find("*/")) == std::string_view::npos) {
        if (!nextLine()) {
            line_ = begin;
            failForForm("comment without an end");
        }
    }
    rest_.remove_prefix(end + 2);
}

void DotTokens::readWord() {
    const std::size_t length =
        countLeading(rest_, [](char next) { return isLetter(next) || isDigit(next); });
    append(rest_.substr(0, length));
    rest_.remove_prefix(length);
    const auto* const keyword = std::ranges::find_if(keywords, [&](std::string_view known) {
        return std::ranges::equal(text_, known, {}, lowered);
    });
    kind_ = keyword == std::end(keywords) ? Kind::plain : Kind::fixed;
    if (kind_ == Kind::fixed) {
        text_ = *keyword;
    }
}

void DotTokens::readNumber(std::size_t length) {
    kind_ = Kind::plain;
    if (length < rest_.size() && (isLetter(rest_[length]) || rest_[length] == '.')) {
        const auto continues = [](char next) {
            return (static_cast<unsigned char>(next) & 0xC0U) == 0x80U;
        };
        length += 1 + countLeading(rest_.substr(length + 1), continues);
        failForForm(
            fmt::format("syntax ambiguity - badly delimited number {} splits into two tokens",
                        inSingleQuotes(rest_.substr(0, length))));
    }
    append(rest_.substr(0, length));
    rest_.remove_prefix(length);
}

void DotTokens::readJoined() {
    std::size_t plusLine = 0;
    bool isJoined = false;
    do {
        const bool isHtml = rest_.front() == '<';
        rest_.remove_prefix(1);
        isHtml ? readHtml() : readQuoted();
        kind_ = isHtml && !isJoined ? Kind::html : Kind::quoted;
        isAtBeginning_ = false;
        needsText_ = false;
        if (!skipToToken() || rest_.front() != '+') {
            return;
        }
        plusLine = lines_.line();
        isJoined = true;
        rest_.remove_prefix(1);
    } while (skipToToken() && (rest_.front() == '"' || rest_.front() == '<'));
    line_ = plusLine;
    text_.assign(1, '+');
    failForSyntax();
}

void DotTokens::readQuoted() {
    for (;;) {
        const auto isSpecial = [](char next) { return next == '"' || next == '\\'; };
        const std::size_t plain = countLeading(rest_, std::not_fn(isSpecial));
        append(rest_.substr(0, plain));
        rest_.remove_prefix(plain);
        if (rest_.empty()) {
            appendLineBreak();
        } else if (rest_.front() == '"') {
            rest_.remove_prefix(1);
            return;
        } else if (rest_.size() == 1 || rest_ == "\\\r") {
            // The text continues in the next line, as if there were no break.
            if (!nextLine()) {
                failForForm("text without an end");
            }
        } else {
            // All other escapes stay for whoever reads a label.
            append(rest_[1] == '"' ? rest_.substr(1, 1) : rest_.substr(0, 2));
            rest_.remove_prefix(2);
        }
    }
}

void DotTokens::readHtml() {
    for (std::size_t depth = 1;;) {
        const std::size_t plain =
            countLeading(rest_, [](char next) { return next != '<' && next != '>'; });
        append(rest_.substr(0, plain));
        rest_.remove_prefix(plain);
        if (rest_.empty()) {
            appendLineBreak();
            continue;
        }
        rest_.front() == '<' ? ++depth : --depth;
        if (depth != 0) {
            append(rest_.substr(0, 1));
        }
        rest_.remove_prefix(1);
        if (depth == 0) {
            return;
        }
    }
}

void DotTokens::readMark() {
    kind_ = Kind::fixed;
    const bool isArrow = rest_.starts_with("->") || rest_.starts_with("--");
    text_.append(rest_, 0, isArrow ? 2 : 1);
    rest_.remove_prefix(text_.size());
}

void DotTokens::append(std::string_view part) {
    if (text_.size() + part.size() > input_.limits().textBytes) {
        fail(tooLongText(input_.limits()));
    }
    text_ += part;
}

void DotTokens::appendLineBreak() {
    if (!nextLine()) {
        failForForm("text without an end");
    }
    append("\n");
}

void DotTokens::fail(std::string_view problem) const {
    throw InputError(input_.name(), line_, problem);
}

void DotTokens::failForSyntax() const {
    failForForm(kind_ == Kind::end ? std::string("the file ends too early")
                                   : fmt::format("syntax error near {}", inSingleQuotes(text_)));
}

void DotTokens::failBefore(std::string_view problem) const {
    throw InputError(input_.name(), lineBefore_, problem);
}

void DotTokens::failForForm(std::string_view problem) const {
    fail(fmt::format("not well-formed DOT: {}", problem));
}

}  // namespace depcompare
