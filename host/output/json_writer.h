#pragma once
// Writes JSON piece by piece, without holding the document.
#include <cstdint>
#include <string_view>

#include "output/output.h"

namespace depcompare {

/// The caller begins and ends objects and arrays; this adds commas, quotation marks and escapes.
class JsonWriter {
  public:
    explicit JsonWriter(Output& output) : output_(output) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    /// Begins a member of the open object; its value comes next.
    void key(std::string_view name);
    void text(std::string_view utf8);
    void text(std::u16string_view text);
    void number(std::uint64_t number);
    /// Requires: finite. The shortest text that reads as the same number.
    void real(double number);
    void boolean(bool value);
    void null();
    /// A member with its value.
    void member(std::string_view name, std::string_view utf8) {
        key(name);
        text(utf8);
    }
    void member(std::string_view name, std::u16string_view value) {
        key(name);
        text(value);
    }
    void member(std::string_view name, std::uint64_t value) {
        key(name);
        number(value);
    }

    /// Starts the next array element on a new line.
    void breakLine() { lineBreak_ = true; }

  private:
    void begin(char bracket);
    void end(char bracket);
    void separate();
    void quote(std::string_view utf8);

    Output& output_;
    bool first_ = true;  // in the open object or array
    bool afterKey_ = false;
    bool lineBreak_ = false;
};

}  // namespace depcompare
