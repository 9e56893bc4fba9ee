#pragma once
// Streams a JSON document and passes on the parts that a reader wants, each as a whole.
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "input/input.h"

namespace depcompare {

/// One step from the document's root: a member of an object or an element of an array.
struct JsonStep {
    std::string key;
    std::size_t index = 0;  ///< of an element
    bool isElement = false;
};

/// The way to a value; empty for the document itself.
class JsonPath {
  public:
    /// A pattern is a list of keys; "*" stands for any element of an array.
    [[nodiscard]] bool is(std::initializer_list<std::string_view> pattern) const;
    [[nodiscard]] bool beginsWith(std::initializer_list<std::string_view> pattern) const;
    [[nodiscard]] std::size_t depth() const { return steps_.size(); }
    [[nodiscard]] const JsonStep& operator[](std::size_t depth) const { return steps_[depth]; }
    /// Requires: the path is not empty.
    [[nodiscard]] const JsonStep& last() const { return steps_.back(); }

  private:
    friend class JsonEvents;
    std::vector<JsonStep> steps_;
};

/// What a reader wants of a document.
class JsonRecords {
  public:
    /// Returns: whether to collect the value that begins here. Not called for values inside a
    ///          collected one.
    [[nodiscard]] virtual bool wants(const JsonPath& path) const = 0;
    /// Order: as in the document. Numbers with a fraction, or too large, are verbatim texts.
    virtual void take(const JsonPath& path, const nlohmann::json& value) = 0;

  protected:
    JsonRecords() = default;
    JsonRecords(const JsonRecords&) = default;
    JsonRecords& operator=(const JsonRecords&) = default;
    ~JsonRecords() = default;
};

/// The bytes of an input, and the parser's position among them.
class JsonBytes {
  public:
    explicit JsonBytes(Input& input);

    [[nodiscard]] bool atEnd() const { return position_ == end_; }
    [[nodiscard]] char current() const { return piece_[position_]; }
    void advance();
    void endToken() { tokenBytes_ = 0; }

    /// Returns: the parser's current line, from 1.
    [[nodiscard]] std::size_t line() const { return line_; }
    [[nodiscard]] const Limits& limits() const { return input_.limits(); }
    [[noreturn]] void fail(std::string_view problem) const;

  private:
    void refill();

    Input& input_;
    std::vector<char> piece_;
    std::size_t position_ = 0;
    std::size_t end_ = 0;
    std::size_t line_ = 1;
    std::size_t tokenBytes_ = 0;
    std::size_t longestToken_;
};

/// Throws: `InputError` if none of the top-level keys `required` is present (the document is then of
///         another format), if the document is not JSON or not UTF-8, or for an exceeded limit; what
///         `records` throws.
void parseJson(JsonBytes& bytes, JsonRecords& records,
               std::initializer_list<std::string_view> required);

/// Returns: a text verbatim, anything else as JSON with sorted keys.
[[nodiscard]] std::string textOf(const nlohmann::json& value);

/// Returns: the text of a member; empty if `object` is not an object or has no such member.
[[nodiscard]] std::string memberText(const nlohmann::json& object, const char* key);

/// Returns: whether the member is there and true.
[[nodiscard]] bool isTrue(const nlohmann::json& object, const char* key);

/// Returns: the keys of the outermost object, as far as these bytes go.
[[nodiscard]] std::vector<std::string> outermostKeys(std::string_view firstBytes);

}  // namespace depcompare
