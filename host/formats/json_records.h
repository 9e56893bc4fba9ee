#pragma once
// Streams a JSON document and hands over the parts that a reader wants, each one whole.
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
    /// Returns: whether the value that begins here is to be collected. Values inside a collected
    ///          one are not asked for.
    [[nodiscard]] virtual bool wants(const JsonPath& path) const = 0;
    /// Order: as in the document. Numbers with a fraction or too large are texts as they stand.
    virtual void take(const JsonPath& path, const nlohmann::json& value) = 0;

  protected:
    JsonRecords() = default;
    JsonRecords(const JsonRecords&) = default;
    JsonRecords& operator=(const JsonRecords&) = default;
    ~JsonRecords() = default;
};

/// The bytes of an input, and where among them the parser stands.
class JsonBytes {
  public:
    explicit JsonBytes(Input& input);

    [[nodiscard]] bool atEnd() const { return position_ == end_; }
    [[nodiscard]] char current() const { return piece_[position_]; }
    void advance();
    void endToken() { tokenBytes_ = 0; }

    /// Returns: the line where the parser stands, from 1.
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

/// Requires of the document one of the outermost keys `required`, without which it is something else
/// than a reader takes it for.
///
/// Throws: `InputError` for what is not JSON or not UTF-8, for a document without such a key, and
///         beyond the limits; what `records` throws.
void parseJson(JsonBytes& bytes, JsonRecords& records,
               std::initializer_list<std::string_view> required);

/// Returns: a text as it stands, anything else as JSON with sorted keys.
[[nodiscard]] std::string textOf(const nlohmann::json& value);

/// Returns: the text of a member; empty where `object` is no object or has no such member.
[[nodiscard]] std::string memberText(const nlohmann::json& object, const char* key);

/// Returns: whether the member is there and true.
[[nodiscard]] bool isTrue(const nlohmann::json& object, const char* key);

/// Returns: the keys of the outermost object, as far as these bytes show them.
[[nodiscard]] std::vector<std::string> outermostKeys(std::string_view firstBytes);

}  // namespace depcompare
