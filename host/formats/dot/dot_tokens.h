#pragma once
// The tokens of a DOT file.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "formats/line_reader.h"
#include "input/input.h"

namespace depcompare {

/// Reads one token after the other; comments, which `#` may begin as well, are passed over.
class DotTokens {
  public:
    enum class Kind : std::uint8_t {
        end,
        fixed,   ///< a mark, or a keyword, which is written in small letters
        plain,   ///< a word or a number
        quoted,  ///< quoted texts, joined if there is a plus sign between them
        html,
    };

    /// Reads the first token. Throws as `advance`.
    explicit DotTokens(Input& input);

    /// Reads the next token.
    ///
    /// Throws: `InputError` for text that is not UTF-8 or longer than the limit, for a text or comment
    ///         without an end, and for a number that a name follows without a space.
    void advance();

    [[nodiscard]] Kind kind() const { return kind_; }
    /// Returns: the current token, without what encloses it.
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] bool is(std::string_view fixed) const {
        return kind_ == Kind::fixed && text_ == fixed;
    }
    [[nodiscard]] bool isName() const { return kind_ != Kind::end && kind_ != Kind::fixed; }
    /// Puts the current token's text into `target`, and reads the next token.
    void take(std::string& target);

    /// Returns: how many bytes the lines up to the current one have.
    [[nodiscard]] std::uint64_t bytesRead() const { return bytesRead_; }

    /// Throws: `InputError` with the line in which the current token begins.
    [[noreturn]] void fail(std::string_view problem) const;
    /// The same, for a token that must not be here.
    [[noreturn]] void failForSyntax() const;
    /// Throws: `InputError` with the line in which the token before the current one begins.
    [[noreturn]] void failBefore(std::string_view problem) const;

  private:
    bool nextLine();
    bool skipToToken();
    void skipComment();
    void readWord();
    void readNumber(std::size_t length);
    void readJoined();
    void readQuoted();
    void readHtml();
    void readMark();
    void append(std::string_view part);
    void appendLineBreak();
    [[noreturn]] void failForForm(std::string_view problem) const;

    Input& input_;
    LineReader lines_;
    std::string_view rest_;      // of the line
    bool isAtBeginning_ = true;  // of the line, blanks and comments aside
    bool needsText_ = false;     // whether the token before is `=` or an arrow
    std::uint64_t bytesRead_ = 0;
    std::size_t line_ = 0;        // in which the token begins
    std::size_t lineBefore_ = 0;  // in which the one before it does
    Kind kind_ = Kind::end;
    std::string text_;
};

}  // namespace depcompare
