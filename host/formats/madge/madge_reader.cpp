#include <algorithm>
#include <vector>

#include <fmt/format.h>

#include "formats/formats.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

class MadgeReader final : public JsonGraphReader {
  public:
    explicit MadgeReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {valuesAt({"{}"})}});
        GraphDraft draft = sink_.finish();
        // Any lists of texts have this shape, but madge lists whatever a module needs as a module too.
        const auto leadsToModule = [&](const EdgeDraft& edge) {
            return std::ranges::binary_search(modules_, at(edge, EdgeColumn::downstream));
        };
        std::ranges::sort(modules_);
        if (!draft.edges.empty() && std::ranges::none_of(draft.edges, leadsToModule)) {
            bytes_.fail("not a list of modules: nothing that a member lists is a member");
        }
        return draft;
    }

    void take(const JsonPath& path, const json& value) override {
        const std::string& module = path.last().key;
        const bool isList =
            value.is_array() && std::all_of(value.begin(), value.end(),
                                            [](const json& item) { return item.is_string(); });
        if (!isList) {
            bytes_.fail(fmt::format("{} is not a list of modules", inQuotes(module)));
        }
        modules_.push_back(sink_.addNode(module));
        for (const json& needed : value) {
            sink_.addEdge(module, needed.get_ref<const std::string&>());
        }
    }

  private:
    std::vector<NodeNumber> modules_;
};

}  // namespace

bool looksLikeMadge(const JsonShape& shape) {
    const auto fits = [](const JsonShape::Value& value) {
        const JsonKind expected = value.path.empty()       ? JsonKind::object
                                  : value.path.size() == 1 ? JsonKind::array
                                                           : JsonKind::text;
        return value.kind == expected;
    };
    return shape.values.size() > 1 && std::ranges::all_of(shape.values, fits);
}

GraphDraft readMadge(Input& input) {
    return MadgeReader(input).read();
}

}  // namespace depcompare
