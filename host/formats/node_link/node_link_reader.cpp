#include <optional>
#include <string>
#include <utility>

#include "formats/edge_data.h"
#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class NodeLinkReader final : public JsonGraphReader {
  public:
    explicit NodeLinkReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({"nodes"}, {"edges", "links", "directed", "multigraph", "graph"});
        if (!isDirected_ && firstEdge_) {
            sink_.failForUndirected(firstEdge_->first, firstEdge_->second);
        }
        return sink_.finish();
    }

    [[nodiscard]] bool wants(const JsonPath& path) const override {
        return path.is({"directed"}) || path.is({"nodes", "*"}) || path.is({"edges", "*"}) ||
               path.is({"links", "*"}) || path.is({"graph", "{}"});
    }

    void take(const JsonPath& path, const json& value) override {
        if (path.is({"directed"})) {
            isDirected_ = value != false;
        } else if (path.is({"nodes", "*"})) {
            addNode(value);
        } else if (path.is({"graph", "{}"})) {
            sink_.setGraphProperty(path.last().key, textOf(value));
        } else {
            addEdge(value);
        }
    }

  private:
    void addNode(const json& value) {
        const json& id = memberOf(value, "id");
        if (id.is_null()) {
            bytes_.fail("node without \"id\"");
        }
        const NodeNumber node = sink_.addNode(textOf(id));
        for (const auto& [key, property] : value.items()) {
            if (key == "name") {
                sink_.setName(node, textOf(property));
            } else if (key == "type") {
                sink_.setType(node, textOf(property));
            } else if (key != "id") {
                sink_.setProperty(node, key, textOf(property));
            }
        }
        // Numbers are positions that another file gives to other nodes.
        if (const json& name = memberOf(value, "name"); id.is_number() && !name.is_null()) {
            sink_.addIdCandidate(node, textOf(name));
        }
    }

    void addEdge(const json& value) {
        const json& source = memberOf(value, "source");
        const json& target = memberOf(value, "target");
        if (source.is_null() || target.is_null()) {
            bytes_.fail("edge without \"source\" or \"target\"");
        }
        if (!firstEdge_) {
            firstEdge_ = {textOf(source), textOf(target)};
        }
        const std::size_t edge = sink_.addEdge(textOf(source), textOf(target));
        for (const auto& [key, column] : edgeData) {
            if (const auto text = value.find(key); text != value.end()) {
                sink_.set(edge, column, textOf(*text));
            }
        }
    }

    std::optional<std::pair<std::string, std::string>> firstEdge_;  // its ends, for a message
    bool isDirected_ = true;
};

}  // namespace

bool looksLikeNodeLink(const JsonShape& shape) {
    return shape.has({"nodes", "*", "id"}) ||
           (shape.has({"nodes"}, JsonKind::array) &&
            (shape.has({"links"}) || shape.has({"edges"}) || shape.has({"multigraph"})));
}

GraphDraft readNodeLink(Input& input) {
    return NodeLinkReader(input).read();
}

}  // namespace depcompare
