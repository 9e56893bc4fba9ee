#include "formats/dependency_cruiser/dependency_cruiser_reader.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/graph_sink.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> texts) {
    return std::ranges::find(texts, text) != texts.end();
}

std::vector<std::string> dependencyTypesOf(const json& described, const GraphSink& sink) {
    std::vector<std::string> types;
    for (const json& type : elementsOf(described, "dependencyTypes", sink)) {
        types.push_back(textOf(type));
    }
    std::ranges::sort(types);
    return types;
}

// The words of a dependency that say where its end was found, not how it is needed.
bool tellsResolution(const std::string& word) {
    return word.starts_with("npm") || word.starts_with("aliased") ||
           isOneOf(word, {"core", "deprecated", "local", "localmodule", "undetermined", "unknown"});
}

std::string typeOfDependency(const json& dependency, const GraphSink& sink) {
    auto words = dependencyTypesOf(dependency, sink);
    std::erase_if(words, tellsResolution);
    return words.empty() ? "depends" : fmt::format("{}", fmt::join(words, " "));
}

/// The type of a module, or of what a dependency leads to.
std::string typeOfModule(const json& module, const GraphSink& sink) {
    if (isTrue(module, "coreModule")) {
        return "core";
    }
    if (isTrue(module, "couldNotResolve")) {
        return "unresolved";
    }
    const auto followable = module.find("followable");
    const bool isFollowed = followable == module.end() || isTrue(module, "followable");
    if (isFollowed && !isTrue(module, "matchesDoNotFollow")) {
        return "file";
    }
    const auto types = dependencyTypesOf(module, sink);
    const bool isPackage =
        std::ranges::any_of(types, [](const std::string& type) { return type.starts_with("npm"); });
    return isPackage ? "npm" : "external";
}

class DependencyCruiserReader final : public JsonGraphReader {
  public:
    explicit DependencyCruiserReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        JsonFormat format{
            .records = {objectsAt({"modules", "*"}), objectsAt({"summary", "violations", "*"})},
            .required = {"modules"},
            .known = {"folders", "revisionData"}};
        for (const char* total :
             {"error", "warn", "info", "ignore", "totalCruised", "totalDependenciesCruised"}) {
            format.records.push_back(valuesAt({"summary", total}));
        }
        parse(format);
        for (const auto& [rule, count] : violations_) {
            sink_.setGraphProperty("violations of " + rule, std::to_string(count));
        }
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        if (path.is({"modules", "*"})) {
            addModule(value);
        } else if (path.last().isElement) {
            ++violations_[memberText(memberOf(value, "rule"), "name")];
        } else {
            sink_.setGraphProperty(path.last().key, textOf(value));
        }
    }

  private:
    void addModule(const json& module) {
        const std::string source = memberText(module, "source");
        if (source.empty()) {
            bytes_.fail("module without \"source\"");
        }
        // A file may combine the results of several runs.
        const NodeNumber node = sink_.addNodeOnce(source);
        sink_.setType(node, typeOfModule(module, sink_));
        for (const auto& [key, value] : module.items()) {
            if (saysSomething(key, value)) {
                sink_.setProperty(node, key, textOf(value));
            }
        }
        for (const json& dependency : elementsOf(module, "dependencies", sink_)) {
            addDependency(source, dependency);
        }
    }

    // The edges say the rest, and every module should be "valid" and no "orphan".
    static bool saysSomething(const std::string& key, const json& value) {
        return !isOneOf(key,
                        {"source", "dependencies", "dependents", "dependencyTypes", "coreModule",
                         "couldNotResolve", "followable", "matchesDoNotFollow"}) &&
               !(key == "valid" && value == true) && !(key == "orphan" && value == false);
    }

    void addDependency(const std::string& source, const json& dependency) {
        const std::string resolved = memberText(dependency, "resolved");
        if (resolved.empty()) {
            bytes_.fail(fmt::format("dependency of {} without \"resolved\"", inQuotes(source)));
        }
        const auto addEdge = [&](const std::string& type) {
            const std::size_t edge = sink_.addEdge(source, resolved);
            sink_.set(edge, EdgeColumn::type, type);
            sink_.set(edge, EdgeColumn::upstreamComponent, memberText(dependency, "module"));
        };
        addEdge(typeOfDependency(dependency, sink_));
        // A dependency has no properties, and what is wrong with it has to be seen: each fault is a
        // dependency beside it, which comes and goes with the fault.
        if (isTrue(dependency, "circular")) {
            addEdge("circular");
        }
        for (const json& rule : elementsOf(dependency, "rules", sink_)) {
            addEdge("violates " + memberText(rule, "name"));
        }
    }

    std::map<std::string, std::size_t> violations_;  // by rule
};

}  // namespace

bool looksLikeDependencyCruiser(const JsonShape& shape) {
    return shape.has({"modules"}, JsonKind::array) ||
           (shape.has({"modules"}) && shape.has({"summary"}, JsonKind::object));
}

GraphDraft readDependencyCruiser(Input& input) {
    return DependencyCruiserReader(input).read();
}

}  // namespace depcompare
