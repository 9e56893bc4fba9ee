#pragma once
// Streams a JSON document and passes on the parts that a reader wants, each as a whole.
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "draft/graph_sink.h"
#include "input/input.h"
#include "input/input_error.h"

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
    /// A pattern is a list of keys; "*" stands for any element of an array, "{}" for any member of
    /// an object.
    [[nodiscard]] bool is(std::initializer_list<std::string_view> pattern) const;
    /// Returns: whether the pattern's first keys, as many as the path has steps, are this path.
    [[nodiscard]] bool leadsTo(const std::vector<std::string_view>& pattern) const;
    /// Returns: the path for people: `graph.nodes`, `components[3]`.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::size_t depth() const { return steps_.size(); }
    [[nodiscard]] const JsonStep& operator[](std::size_t depth) const { return steps_[depth]; }
    /// Requires: the path is not empty.
    [[nodiscard]] const JsonStep& last() const { return steps_.back(); }

  private:
    friend class JsonEvents;
    std::vector<JsonStep> steps_;
};

/// A place of values that a reader takes.
struct JsonPlace {
    std::vector<std::string_view> path;  ///< a pattern, see `JsonPath`
    bool takesObjectsOnly = false;       ///< whether any other value there is an error
};

[[nodiscard]] inline JsonPlace valuesAt(std::vector<std::string_view> path) {
    return {.path = std::move(path), .takesObjectsOnly = false};
}

[[nodiscard]] inline JsonPlace objectsAt(std::vector<std::string_view> path) {
    return {.path = std::move(path), .takesObjectsOnly = true};
}

/// What a reader expects of a document. The collections that lead to its records must be arrays or
/// objects, as the places say, or null.
struct JsonFormat {
    std::vector<JsonPlace> records;
    std::vector<std::string_view> required = {};  ///< outermost members: there has to be one
    bool excludesOthers = false;                  ///< and only one of these
    std::vector<std::string_view> known = {};     ///< outermost members that are left out
};

class JsonRecords {
  public:
    /// Called with each value that is a record, as a whole.
    ///
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
    /// Takes back the byte that ended a number.
    ///
    /// Requires: the parser has just read a number.
    void stepBack();
    /// Lets the parser read this text, of few bytes and one line, before the current byte.
    void putBefore(std::string_view text);

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

/// Returns: the outermost members that the format does not have.
/// Throws:  `InputError` for what is not JSON or not UTF-8, beyond the limits, not as the format
///          expects, and for a member that occurs twice, if the format has it; what `records`
///          throws.
QuotedNames parseJson(JsonBytes& bytes, JsonRecords& records, const JsonFormat& format);

/// What readers of JSON have in common: records in, a graph out. Nodes that only edges name are
/// added.
class JsonGraphReader : public JsonRecords {
  public:
    JsonGraphReader(const JsonGraphReader&) = delete;
    JsonGraphReader& operator=(const JsonGraphReader&) = delete;

  protected:
    explicit JsonGraphReader(Input& input);
    ~JsonGraphReader() = default;

    /// As `parseJson`; members that are not known are named in a warning.
    void parse(const JsonFormat& format);

    JsonBytes bytes_;
    GraphSink sink_;
};

/// Returns: a text verbatim, anything else as JSON with sorted keys.
[[nodiscard]] std::string textOf(const nlohmann::json& value);

/// Returns: the text of a member; empty if `object` is not an object or has no such member.
[[nodiscard]] std::string memberText(const nlohmann::json& object, const char* key);

/// Returns: the member; null if `object` is not an object or has no such member.
[[nodiscard]] const nlohmann::json& memberOf(const nlohmann::json& object, const char* key);

/// Returns: the member, an array; an empty one if it is null or missing.
/// Throws:  `InputError` if it is anything else.
[[nodiscard]] const nlohmann::json& elementsOf(const nlohmann::json& object, const char* key,
                                               const GraphSink& sink);

/// The same for an object.
[[nodiscard]] const nlohmann::json& membersOf(const nlohmann::json& object, const char* key,
                                              const GraphSink& sink);

/// Returns: the value, true or false; nothing if it is null.
/// Throws:  `InputError` if it is anything else.
[[nodiscard]] std::optional<bool> truthOf(const nlohmann::json& value, std::string_view name,
                                          const GraphSink& sink);

/// Returns: whether the member is there and true.
[[nodiscard]] bool isTrue(const nlohmann::json& object, const char* key);

}  // namespace depcompare
