#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class EsbuildReader final : public JsonGraphReader {
  public:
    explicit EsbuildReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {objectsAt({"inputs", "{}"})},
               .required = {"inputs"},
               .known = {"outputs"}});
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        const std::string& source = path.last().key;
        if (!memberOf(value, "imports").is_array()) {
            bytes_.fail("input without \"imports\"");
        }
        const NodeNumber node = sink_.addNodeOnce(source);
        for (const char* key : {"bytes", "format"}) {
            if (const json& text = memberOf(value, key); !text.is_null()) {
                sink_.setProperty(node, key, textOf(text));
            }
        }
        for (const json& import : value["imports"]) {
            addImport(source, import);
        }
    }

  private:
    void addImport(const std::string& source, const json& import) {
        const std::string path = memberText(import, "path");
        if (path.empty()) {
            bytes_.fail("import without \"path\"");
        }
        if (isTrue(import, "external")) {
            sink_.setType(sink_.addNodeOnce(path), "external");
        }
        const std::size_t edge = sink_.addEdge(source, path);
        if (const std::string kind = memberText(import, "kind"); !kind.empty()) {
            sink_.set(edge, EdgeColumn::type, kind);
        }
        sink_.set(edge, EdgeColumn::upstreamComponent, memberText(import, "original"));
    }
};

}  // namespace

bool looksLikeEsbuild(const JsonShape& shape) {
    return shape.has({"inputs", "*", "imports"}, JsonKind::array);
}

GraphDraft readEsbuild(Input& input) {
    return EsbuildReader(input).read();
}

}  // namespace depcompare
