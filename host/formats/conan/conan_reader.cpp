#include <fmt/format.h>

#include "formats/formats.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

// Early versions write the word, later ones the value.
bool says(const json& object, const char* key, std::string_view word) {
    const std::string text = memberText(object, key);
    return text == word || (word == "True" && text == "true") ||
           (word == "False" && text == "false");
}

class ConanReader final : public JsonGraphReader {
  public:
    explicit ConanReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {objectsAt({"graph", "nodes", "{}"})},
               .required = {"graph"},
               .known = {"error", "warnings"}});
        if (!hasPackages_) {
            bytes_.fail("not a graph of Conan 2: \"graph\" has no packages among \"nodes\"");
        }
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        if (memberText(value, "ref").empty()) {
            bytes_.fail("package without \"ref\"");
        }
        hasPackages_ = true;
        const std::string& number = path.last().key;
        addPackage(sink_.addNode(number), value);
        for (const auto& [end, requirement] : membersOf(value, "dependencies", sink_).items()) {
            if (!requirement.is_object()) {
                bytes_.fail(fmt::format("dependency {} is not an object", inQuotes(end)));
            }
            // What a package needs through another one is listed too.
            if (!says(requirement, "direct", "False")) {
                addDependency(number, end, requirement);
            }
        }
    }

  private:
    void addPackage(NodeNumber node, const json& package) {
        const json& name = memberOf(package, "name");
        const std::string label = memberText(package, "label");
        const std::string ref = memberText(package, "ref");
        const std::string shown = name.is_string() ? textOf(name) : label.empty() ? ref : label;
        const std::string context = memberText(package, "context");
        sink_.setName(node, shown);
        for (const std::string& id : {shown, ref}) {
            sink_.addIdCandidate(node, id);
            sink_.addIdCandidate(node, fmt::format("{} ({})", id, context));
        }
        for (const auto& [key, value] : package.items()) {
            // Folders are this machine's.
            if (!value.is_null() && key != "name" && key != "label" && key != "id" &&
                key != "dependencies" && !key.ends_with("_folder")) {
                sink_.setProperty(node, key, textOf(value));
            }
        }
    }

    void addDependency(const std::string& source, const std::string& target,
                       const json& requirement) {
        const std::size_t edge = sink_.addEdge(source, target);
        sink_.set(edge, EdgeColumn::type,
                  says(requirement, "build", "True")  ? "tool_requires"
                  : says(requirement, "test", "True") ? "test_requires"
                                                      : "requires");
    }

    bool hasPackages_ = false;
};

}  // namespace

bool looksLikeConan(const JsonShape& shape) {
    return shape.has({"graph", "nodes", "*", "ref"}, JsonKind::text);
}

GraphDraft readConan(Input& input) {
    return ConanReader(input).read();
}

}  // namespace depcompare
