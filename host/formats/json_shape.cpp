#include "formats/json_shape.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <nlohmann/json.hpp>

namespace depcompare {

namespace {

using nlohmann::json;

class ShapeEvents final : public json::json_sax_t {
  public:
    bool null() override { return value(JsonKind::other); }
    bool boolean(bool /*is*/) override { return value(JsonKind::other); }
    bool number_integer(std::int64_t /*number*/) override { return value(JsonKind::other); }
    bool number_unsigned(std::uint64_t /*number*/) override { return value(JsonKind::other); }
    bool number_float(double /*number*/, const std::string& /*text*/) override {
        return value(JsonKind::other);
    }
    bool string(std::string& /*text*/) override { return value(JsonKind::text); }
    bool binary(json::binary_t& /*bytes*/) override { return value(JsonKind::other); }
    bool start_object(std::size_t /*elements*/) override { return start(JsonKind::object, ""); }
    bool key(std::string& key) override {
        if (depth_ <= deepest) {
            path_.back() = std::move(key);
        }
        return true;
    }
    bool end_object() override { return end(); }
    bool start_array(std::size_t /*elements*/) override { return start(JsonKind::array, "*"); }
    bool end_array() override { return end(); }
    bool parse_error(std::size_t /*position*/, const std::string& /*lastToken*/,
                     const json::exception& /*error*/) override {
        return false;  // here the bytes end
    }

    JsonShape shape;

  private:
    static constexpr std::size_t deepest = 4;

    bool value(JsonKind kind) {
        if (depth_ <= deepest) {
            shape.values.push_back({.path = path_, .kind = kind});
        }
        return depth_ != 0;  // a lone text or number is not a document that anything reads
    }
    bool start(JsonKind kind, const char* step) {
        static_cast<void>(value(kind));
        if (++depth_ <= deepest) {
            path_.emplace_back(step);
        }
        return true;
    }
    bool end() {
        if (depth_-- <= deepest) {
            path_.pop_back();
        }
        return true;
    }

    std::vector<std::string> path_;
    std::size_t depth_ = 0;
};

bool matches(const JsonShape::Value& value, std::initializer_list<std::string_view> pattern) {
    return std::ranges::equal(value.path, pattern,
                              [](const std::string& step, std::string_view wanted) {
                                  return wanted == "*" || step == wanted;
                              });
}

}  // namespace

bool JsonShape::has(std::initializer_list<std::string_view> path) const {
    return std::ranges::any_of(values, [&](const Value& value) { return matches(value, path); });
}

bool JsonShape::has(std::initializer_list<std::string_view> path, JsonKind kind) const {
    return std::ranges::any_of(
        values, [&](const Value& value) { return value.kind == kind && matches(value, path); });
}

JsonShape jsonShapeOf(std::string_view firstBytes) {
    ShapeEvents events;
    static_cast<void>(json::sax_parse(firstBytes, &events));
    return std::move(events.shape);
}

}  // namespace depcompare
