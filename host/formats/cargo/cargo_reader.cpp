#include <fmt/format.h>

#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class CargoReader final : public JsonGraphReader {
  public:
    explicit CargoReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {objectsAt({"packages", "*"}), objectsAt({"resolve", "nodes", "*"})},
               .required = {"packages"},
               .known = {"workspace_members", "workspace_default_members", "target_directory",
                         "build_directory", "version", "workspace_root", "metadata"}});
        if (!isResolved_) {
            bytes_.fail("no dependencies under \"resolve\"; run cargo metadata without --no-deps");
        }
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        const std::string id = memberText(value, "id");
        if (id.empty()) {
            bytes_.fail("package without \"id\"");
        }
        if (path[0].key == "packages") {
            addPackage(id, value);
        } else {
            isResolved_ = true;
            addDependencies(id, elementsOf(value, "deps", sink_));
            if (!value.contains("deps")) {  // as before cargo 1.41
                for (const json& target : elementsOf(value, "dependencies", sink_)) {
                    sink_.set(sink_.addEdge(id, textOf(target)), EdgeColumn::type, "normal");
                }
            }
        }
    }

  private:
    void addPackage(const std::string& id, const json& package) {
        const std::string name = memberText(package, "name");
        const NodeNumber node = sink_.addNode(id);
        sink_.setName(node, name);
        sink_.addIdCandidate(node, name);
        sink_.addIdCandidate(node, fmt::format("{}@{}", name, memberText(package, "version")));
        for (const auto& [key, value] : package.items()) {
            // Paths are this machine's.
            if (value.is_primitive() && !value.is_null() && key != "id" && key != "name" &&
                key != "manifest_path") {
                sink_.setProperty(node, key, textOf(value));
            }
        }
    }

    void addDependencies(const std::string& source, const json& dependencies) {
        for (const json& dependency : dependencies) {
            const std::string target = memberText(dependency, "pkg");
            if (target.empty()) {
                bytes_.fail("dependency without \"pkg\"");
            }
            const json& kinds = elementsOf(dependency, "dep_kinds", sink_);
            if (kinds.empty()) {
                sink_.addEdge(source, target);
            }
            for (const json& kind : kinds) {
                const std::string type = memberText(kind, "kind");
                const std::size_t edge = sink_.addEdge(source, target);
                sink_.set(edge, EdgeColumn::type, type == "null" ? "normal" : type);
            }
        }
    }

    bool isResolved_ = false;
};

}  // namespace

bool looksLikeCargo(const JsonShape& shape) {
    return shape.has({"packages", "*", "manifest_path"}) || shape.has({"workspace_members"});
}

GraphDraft readCargo(Input& input) {
    return CargoReader(input).read();
}

}  // namespace depcompare
