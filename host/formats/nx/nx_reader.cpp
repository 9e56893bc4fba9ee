#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class NxReader final : public JsonGraphReader {
  public:
    explicit NxReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {objectsAt({"graph", "nodes", "{}"}),
                           objectsAt({"graph", "externalNodes", "{}"}),
                           objectsAt({"graph", "dependencies", "{}", "*"})},
               .required = {"graph"},
               .known = {"affected", "affectedProjects", "criticalPath", "tasks", "taskPlans"}});
        if (!hasProjects_) {
            bytes_.fail("not a project graph of nx: \"graph\" has no projects among \"nodes\"");
        }
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        if (path[1].key == "dependencies") {
            addDependency(value);
        } else {
            addProject(path.last().key, value);
        }
    }

  private:
    void addProject(const std::string& id, const json& project) {
        const json& data = memberOf(project, "data");
        if (!data.is_object()) {
            bytes_.fail("project without \"data\"");
        }
        hasProjects_ = true;
        const NodeNumber node = sink_.addNode(id);
        sink_.setProperty(node, "type", memberText(project, "type"));
        for (const auto& [key, value] : data.items()) {
            if (key != "name") {
                sink_.setProperty(node, key, textOf(value));
            }
        }
    }

    void addDependency(const json& dependency) {
        const std::string source = memberText(dependency, "source");
        const std::string target = memberText(dependency, "target");
        if (source.empty() || target.empty()) {
            bytes_.fail("dependency without \"source\" or \"target\"");
        }
        const std::size_t edge = sink_.addEdge(source, target);
        if (const std::string type = memberText(dependency, "type"); !type.empty()) {
            sink_.set(edge, EdgeColumn::type, type);
        }
    }

    bool hasProjects_ = false;
};

}  // namespace

bool looksLikeNx(const JsonShape& shape) {
    return shape.has({"graph", "nodes", "*", "data"}, JsonKind::object) ||
           shape.has({"graph", "dependencies"}, JsonKind::object);
}

GraphDraft readNx(Input& input) {
    return NxReader(input).read();
}

}  // namespace depcompare
