#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class PipdeptreeReader final : public JsonGraphReader {
  public:
    explicit PipdeptreeReader(Input& input) : JsonGraphReader(input) {
        sink_.foldEqualEdges();  // the nested form repeats whatever several packages need
    }

    GraphDraft read() {
        parse({.records = {objectsAt({"*"})}});
        return sink_.finish();
    }

    void take(const JsonPath& /*path*/, const json& value) override {
        const json& package = memberOf(value, "package");
        // The nested form has the package's members beside its dependencies.
        addTree(package.is_object() ? package : value, elementsOf(value, "dependencies", sink_));
    }

  private:
    void addTree(const json& package, const json& dependencies) {
        const std::string key = memberText(package, "key");
        if (key.empty()) {
            bytes_.fail("package without \"key\"");
        }
        if (const auto node = sink_.addNewNode(key)) {
            describe(*node, package);
        }
        for (const json& dependency : dependencies) {
            addTree(dependency, elementsOf(dependency, "dependencies", sink_));
            sink_.addEdge(key, memberText(dependency, "key"));
        }
    }

    void describe(NodeNumber node, const json& package) {
        if (const std::string name = memberText(package, "package_name"); !name.empty()) {
            sink_.setName(node, name);
        }
        if (const json& version = memberOf(package, "installed_version"); version == "?") {
            sink_.setType(node, "missing");
        } else if (version.is_string()) {
            sink_.setProperty(node, "version", textOf(version));
        }
    }
};

}  // namespace

bool looksLikePipdeptree(const JsonShape& shape) {
    return shape.has({"*", "package", "key"}) ||
           (shape.has({}, JsonKind::array) && shape.has({"*", "package_name"}));
}

GraphDraft readPipdeptree(Input& input) {
    return PipdeptreeReader(input).read();
}

}  // namespace depcompare
