#pragma once
// A streaming XML parser for readers: events out, errors as exceptions.
#include <concepts>
#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <string_view>

#include <expat.h>

#include "input/input.h"

namespace depcompare {

/// The attributes of one element; valid during its event.
class XmlAttributes {
  public:
    explicit XmlAttributes(const char** pairs) : pairs_(pairs) {}

    [[nodiscard]] std::optional<std::string_view> find(std::string_view name) const;

  private:
    const char** pairs_;  // name, value, ..., null
};

/// Receives the events of a file. An exception ends the parsing and reaches its caller.
class XmlEvents {
  public:
    virtual void start(std::string_view element, const XmlAttributes& attributes) = 0;
    virtual void end() = 0;
    virtual void text(std::string_view part) = 0;
    virtual void comment(std::string_view /*text*/) {}

  protected:
    XmlEvents() = default;
    XmlEvents(const XmlEvents&) = default;
    XmlEvents& operator=(const XmlEvents&) = default;
    ~XmlEvents() = default;
};

/// Declarations of entities and attributes are refused, external ones are never followed, and depth is
/// limited, as is the length of a token.
class XmlParser {
  public:
    XmlParser();

    /// Throws: `InputError` with the line if the input is not well-formed, and what `events` throws.
    void parse(Input& input, XmlEvents& events);

    /// Returns: the line where the current event begins, from 1.
    [[nodiscard]] std::size_t line() const;

  private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    template <std::invocable Action>
    void guarded(Action action);
    void startElement(const char* name, const char** attributes);
    void refuse(std::string_view problem);
    void endToken() { tokenEnded_ = true; }
    [[noreturn]] void fail(std::string_view problem) const;

    std::unique_ptr<XML_ParserStruct, Free> parser_;
    Input* input_ = nullptr;
    XmlEvents* events_ = nullptr;
    std::exception_ptr failure_;
    std::size_t depth_ = 0;
    bool tokenEnded_ = false;  // since it was last set
};

}  // namespace depcompare
