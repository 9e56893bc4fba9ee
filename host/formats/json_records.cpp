#include "formats/json_records.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <span>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/seeded_hash.h"

namespace depcompare {

using nlohmann::json;

namespace {

constexpr std::size_t pieceBytes = 1U << 16U;
constexpr std::size_t bytesBefore = 8;  // a piece, for what is read again

constexpr int numberOutOfRange = 406;

/// Reads the bytes one by one, as the parser wants them.
class ByteIterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    ByteIterator() = default;
    explicit ByteIterator(JsonBytes& bytes) : bytes_(&bytes) {}

    char operator*() const { return bytes_->current(); }
    ByteIterator& operator++() {
        bytes_->advance();
        return *this;
    }
    ByteIterator operator++(int) { return ++*this; }
    // Only the comparison with the end is asked for.
    friend bool operator==(const ByteIterator& one, const ByteIterator& /*end*/) {
        return one.bytes_->atEnd();
    }
    friend bool operator!=(const ByteIterator& one, const ByteIterator& end) {
        return !(one == end);
    }

  private:
    JsonBytes* bytes_ = nullptr;
};

std::string withoutPlace(std::string_view problem) {
    // The parser's message gives the place before the first ": ", and repeats what it read last.
    if (const std::size_t end = problem.find(": "); end != std::string_view::npos) {
        problem.remove_prefix(end + 2);
    }
    return std::string(problem.substr(0, problem.find("; last read")));
}

bool fitsStep(std::string_view key, const JsonStep& step) {
    return step.isElement ? key == "*" : key == "{}" || key == step.key;
}

const json& memberOfKind(const json& object, const char* key, const json& none,
                         std::string_view kind, const GraphSink& sink) {
    const json& member = memberOf(object, key);
    if (member.is_null()) {
        return none;
    }
    if (member.type() != none.type()) {
        sink.fail(fmt::format("\"{}\" is not {}", key, kind));
    }
    return member;
}

}  // namespace

/// Follows the path, and builds what is wanted.
class JsonEvents final : public json::json_sax_t {
  public:
    JsonEvents(JsonBytes& bytes, JsonRecords& records, const JsonFormat& format)
        : bytes_(bytes), records_(records), format_(format) {}

    /// Requires: the document was read.
    void requireMembers() const {
        const auto isThere = [&](std::string_view key) { return keys_.contains(key); };
        const auto& required = format_.required;
        if (!required.empty() && std::ranges::none_of(required, isThere)) {
            bytes_.fail(
                fmt::format("the document has no member \"{}\"", fmt::join(required, "\" or \"")));
        }
        if (format_.excludesOthers && std::ranges::count_if(required, isThere) > 1) {
            bytes_.fail(fmt::format("the document has more than one of the members \"{}\"",
                                    fmt::join(required, "\", \"")));
        }
    }
    [[nodiscard]] QuotedNames& unknownKeys() { return unknownKeys_; }

    /// Returns: the beginning of a document that ends like the innermost open container. The events of
    ///          reading it are passed over.
    [[nodiscard]] std::string_view beginningForRest() {
        const bool isWhole = path_.depth() == 0;
        const bool isArray = !isWhole && path_.last().isElement;
        eventsToSkip_ = isWhole ? 1 : isArray ? 2 : 3;
        return isWhole ? "0" : isArray ? "[0" : R"({"":0)";
    }
    [[nodiscard]] bool isAtEnd() const { return path_.depth() == 0; }

    bool null() override { return value(json()); }
    bool boolean(bool is) override { return value(json(is)); }
    bool number_integer(std::int64_t number) override { return value(json(number)); }
    bool number_unsigned(std::uint64_t number) override { return value(json(number)); }
    bool number_float(double /*number*/, const std::string& text) override {
        return value(json(text));
    }
    bool string(std::string& text) override { return value(json(std::move(text))); }
    bool binary(json::binary_t& /*bytes*/) override { return false; }
    bool start_object(std::size_t /*elements*/) override {
        return start(json::value_t::object, false);
    }
    bool key(std::string& key) override {
        if (skips()) {
            return true;
        }
        bytes_.endToken();
        path_.steps_.back().key = std::move(key);
        if (path_.depth() == 1) {
            noteOutermost(path_.last().key);
        }
        if (open_.empty()) {
            noteWanted();
        }
        return true;
    }
    bool end_object() override { return end(); }
    bool start_array(std::size_t /*elements*/) override {
        return start(json::value_t::array, true);
    }
    bool end_array() override { return end(); }
    bool parse_error(std::size_t /*position*/, const std::string& lastToken,
                     const json::exception& error) override {
        if (error.id == numberOutOfRange) {
            bytes_.stepBack();
            return !value(json(lastToken));
        }
        bytes_.fail("not well-formed JSON: " + withoutPlace(error.what()));
    }

  private:
    void noteOutermost(const std::string& key) {
        bool isAny = false;
        for (const JsonPlace& place : format_.records) {
            isAny |= !place.path.empty() && place.path[0] == "{}";
            if (!place.path.empty() && place.path[0] == key) {
                keys_.insert(place.path[0]);
                return;
            }
        }
        for (const auto* keys : {&format_.required, &format_.known}) {
            if (const auto found = std::ranges::find(*keys, key); found != keys->end()) {
                if (!keys_.insert(*found).second) {
                    failForSecond();
                }
                return;
            }
        }
        if (!isAny) {
            unknownKeys_.add(key);
        }
    }

    void noteWanted() {
        const std::size_t depth = path_.depth();
        const bool isWanted = std::ranges::any_of(
            format_.records, [&](const JsonPlace& place) { return path_.leadsTo(place.path); });
        if (isWanted) {
            wanted_.resize(std::max(wanted_.size(), depth + 1));
            if (!wanted_[depth].insert(path_.last().key).second) {
                failForSecond();
            }
        }
    }

    // Contents of the same name would be merged.
    [[noreturn]] void failForSecond() const {
        bytes_.fail(fmt::format("{} occurs twice", inQuotes(path_.text())));
    }

    /// Returns: whether the value that begins here is a record.
    [[nodiscard]] bool isRecord(json::value_t kind) const {
        bool isPlaceOfRecord = false;
        bool isPlaceOfObject = false;
        bool isCollection = false;
        bool fits = kind == json::value_t::null && path_.depth() != 0;
        std::string_view expected;
        for (const auto& [place, takesObjectsOnly] : format_.records) {
            if (place.size() < path_.depth() || !path_.leadsTo(place)) {
                continue;
            }
            if (place.size() == path_.depth()) {
                isPlaceOfRecord = true;
                isPlaceOfObject = takesObjectsOnly;
            } else {
                isCollection = true;
                const bool isArray = place[path_.depth()] == "*";
                fits |= kind == (isArray ? json::value_t::array : json::value_t::object);
                expected = isArray ? "an array" : "an object";
            }
        }
        if (isCollection) {  // whatever a place with "{}" says of all others
            requireKind(fits, expected);
            return false;
        }
        requireKind(!isPlaceOfObject || kind == json::value_t::object, "an object");
        return isPlaceOfRecord;
    }

    void requireKind(bool fits, std::string_view expected) const {
        if (!fits) {
            bytes_.fail(fmt::format("{} is not {}",
                                    path_.depth() == 0 ? "the document" : inQuotes(path_.text()),
                                    expected));
        }
    }

    bool skips() {
        const bool skipped = eventsToSkip_ != 0;
        eventsToSkip_ -= skipped ? 1 : 0;
        return skipped;
    }

    bool value(json value) {
        if (skips()) {
            return true;
        }
        bytes_.endToken();
        if (!open_.empty()) {
            place(std::move(value));
        } else if (isRecord(value.type())) {
            records_.take(path_, value);
        }
        return leave();
    }

    bool start(json::value_t kind, bool isArray) {
        if (skips()) {
            return true;
        }
        bytes_.endToken();
        if (!open_.empty()) {
            open_.push_back(place(json(kind)));
        } else if (isRecord(kind)) {
            record_ = json(kind);
            open_.push_back(&record_);
        }
        path_.steps_.push_back({.key = {}, .index = 0, .isElement = isArray});
        if (path_.depth() > bytes_.limits().nestingDepth) {
            bytes_.fail(tooDeep("values", bytes_.limits()));
        }
        return true;
    }

    bool end() {
        bytes_.endToken();
        if (open_.empty() && path_.depth() < wanted_.size()) {
            wanted_[path_.depth()] = {};
        }
        path_.steps_.pop_back();
        if (!open_.empty()) {
            open_.pop_back();
            if (open_.empty()) {
                records_.take(path_, record_);
            }
        }
        return leave();
    }

    bool leave() {
        if (path_.depth() != 0) {
            ++path_.steps_.back().index;
        }
        return true;
    }

    json* place(json value) {
        json& parent = *open_.back();
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return &parent.back();
        }
        const auto [member, isNew] =
            parent.get_ref<json::object_t&>().try_emplace(path_.last().key, std::move(value));
        if (!isNew) {
            failForSecond();
        }
        return &member->second;
    }

    JsonBytes& bytes_;
    JsonRecords& records_;
    const JsonFormat& format_;
    std::set<std::string_view> keys_;  // of the format, that the document has
    // The members of the open objects, by depth.
    std::vector<std::unordered_set<std::string, SeededHash>> wanted_;
    QuotedNames unknownKeys_;
    JsonPath path_;
    json record_;
    int eventsToSkip_ = 0;
    std::vector<json*> open_;  // the containers of the record that are open
};

bool JsonPath::is(std::initializer_list<std::string_view> pattern) const {
    return std::ranges::equal(pattern, steps_, fitsStep);
}

bool JsonPath::leadsTo(const std::vector<std::string_view>& pattern) const {
    return pattern.size() >= steps_.size() &&
           std::ranges::equal(std::span(pattern).first(steps_.size()), steps_, fitsStep);
}

std::string JsonPath::text() const {
    std::string text;
    for (const JsonStep& step : steps_) {
        text += step.isElement ? fmt::format("[{}]", step.index)
                : text.empty() ? step.key
                               : "." + step.key;
    }
    return text;
}

JsonBytes::JsonBytes(Input& input) : input_(input), piece_(bytesBefore + pieceBytes) {
    // An escape takes up to six bytes for one of the text.
    constexpr std::size_t escapeBytes = 6;
    const std::size_t textBytes = input.limits().textBytes;
    longestToken_ = std::max(textBytes, textBytes * escapeBytes) + pieceBytes;
    refill();
}

void JsonBytes::advance() {
    line_ += piece_[position_] == '\n' ? 1 : 0;
    if (++tokenBytes_ > longestToken_) {
        fail(tooLongText(limits()));
    }
    if (++position_ == end_) {
        refill();
    }
}

void JsonBytes::stepBack() {
    // If the input has ended, no byte follows the number.
    if (piece_[position_ - 1] < '0' || piece_[position_ - 1] > '9') {
        line_ -= piece_[--position_] == '\n' ? 1 : 0;
    }
}

void JsonBytes::putBefore(std::string_view text) {
    position_ -= text.size();
    std::ranges::copy(text, piece_.begin() + static_cast<std::ptrdiff_t>(position_));
}

void JsonBytes::refill() {
    if (position_ != 0) {
        piece_[bytesBefore - 1] = piece_[position_ - 1];
    }
    position_ = bytesBefore;
    end_ = bytesBefore + input_.read(std::span(piece_).subspan(bytesBefore));
}

void JsonBytes::fail(std::string_view problem) const {
    throw InputError(input_.name(), line_, problem);
}

QuotedNames parseJson(JsonBytes& bytes, JsonRecords& records, const JsonFormat& format) {
    JsonEvents events(bytes, records, format);
    bool isWhole = json::sax_parse(ByteIterator(bytes), ByteIterator(), &events);
    // The parser has given up at a number that is too large for it, and that counts as a text. Others
    // read what follows, up to the end of one container each.
    while (!isWhole) {
        const bool isLast = events.isAtEnd();
        bytes.putBefore(events.beginningForRest());
        isWhole = json::sax_parse(ByteIterator(bytes), ByteIterator(), &events,
                                  json::input_format_t::json, isLast) &&
                  isLast;
    }
    events.requireMembers();
    return std::move(events.unknownKeys());
}

JsonGraphReader::JsonGraphReader(Input& input)
    : bytes_(input), sink_(input.name(), input.limits(), [this] { return bytes_.line(); }) {
    sink_.addMissingEnds();
}

void JsonGraphReader::parse(const JsonFormat& format) {
    sink_.warnOfUnknown("members", parseJson(bytes_, *this, format));
}

std::string textOf(const json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string memberText(const json& object, const char* key) {
    const auto member = object.is_object() ? object.find(key) : object.end();
    return member == object.end() ? std::string() : textOf(*member);
}

const json& memberOf(const json& object, const char* key) {
    static const json none;
    const auto member = object.is_object() ? object.find(key) : object.end();
    return member == object.end() ? none : *member;
}

const json& elementsOf(const json& object, const char* key, const GraphSink& sink) {
    static const json none = json::array();
    return memberOfKind(object, key, none, "an array", sink);
}

const json& membersOf(const json& object, const char* key, const GraphSink& sink) {
    static const json none = json::object();
    return memberOfKind(object, key, none, "an object", sink);
}

std::optional<bool> truthOf(const json& value, std::string_view name, const GraphSink& sink) {
    if (value.is_null()) {
        return std::nullopt;
    }
    if (!value.is_boolean()) {
        sink.fail(fmt::format("\"{}\" is neither true nor false", name));
    }
    return value.get<bool>();
}

bool isTrue(const json& object, const char* key) {
    const auto member = object.is_object() ? object.find(key) : object.end();
    return member != object.end() && member->is_boolean() && member->get<bool>();
}

}  // namespace depcompare
