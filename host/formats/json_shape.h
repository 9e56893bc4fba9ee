#pragma once
// What a JSON document is, as far as its first bytes show: formats are detected from it.
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace depcompare {

enum class JsonKind : std::uint8_t { object, array, text, other };

struct JsonShape {
    /// A value at most four steps from the document's root.
    struct Value {
        std::vector<std::string> path;  ///< keys; an element of an array is "*"
        JsonKind kind;
    };

    /// In the order of the document; none if the bytes do not begin like an object or array.
    std::vector<Value> values;

    /// Returns: whether there is a value at this path; "*" in `path` is any member or element.
    [[nodiscard]] bool has(std::initializer_list<std::string_view> path) const;
    /// The same for a value of this kind.
    [[nodiscard]] bool has(std::initializer_list<std::string_view> path, JsonKind kind) const;
};

[[nodiscard]] JsonShape jsonShapeOf(std::string_view firstBytes);

}  // namespace depcompare
