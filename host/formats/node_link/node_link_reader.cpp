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
        parse({.records = {valuesAt({"directed"}), valuesAt({"graph", "{}"}),
                           objectsAt({"nodes", "*"}), objectsAt({"edges", "*"}),
                           objectsAt({"links", "*"})},
               .required = {"nodes"},
               .known = {"multigraph"}});
        if (!isDirected_ && firstEdge_) {
            sink_.failForUndirected(firstEdge_->first, firstEdge_->second);
        }
        if (hasNodes_ && !hasNumberID_ && hasNumberEnd_) {
            bytes_.fail("edges name nodes by position; write them with the nodes' IDs");
        }
        data_.warnOfIgnored("members of edges");
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        if (path.is({"directed"})) {
            isDirected_ = truthOf(value, "directed", sink_).value_or(true);
        } else if (path.is({"nodes", "*"})) {
            addNode(value);
        } else if (path.is({"graph", "{}"})) {
            sink_.setGraphProperty(path.last().key, textOf(value));
        } else {
            if (std::exchange(edges_, path[0].key) != path[0].key && firstEdge_) {
                bytes_.fail("the document has both \"edges\" and \"links\"");
            }
            addEdge(value);
        }
    }

  private:
    void addNode(const json& value) {
        const json& id = memberOf(value, "id");
        if (id.is_null()) {
            bytes_.fail("node without \"id\"");
        }
        hasNodes_ = true;
        hasNumberID_ |= textOf(id).find_first_not_of("0123456789") == std::string::npos;
        const NodeNumber node = sink_.addNode(textOf(id));
        for (const auto& [key, property] : value.items()) {
            if (property.is_null()) {
                continue;
            }
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
        hasNumberEnd_ |= source.is_number() || target.is_number();
        if (!firstEdge_) {
            firstEdge_ = {textOf(source), textOf(target)};
        }
        const std::size_t edge = sink_.addEdge(textOf(source), textOf(target));
        for (const auto& [key, datum] : value.items()) {
            // The key of a multigraph only numbers the edges of a pair.
            if (key != "source" && key != "target" && key != "key" && !datum.is_null()) {
                data_.set(edge, key, textOf(datum), key);
            }
        }
    }

    std::optional<std::pair<std::string, std::string>> firstEdge_;  // its ends, for a message
    NamedEdgeData data_{sink_};
    std::string edges_;  // the member that has them
    bool isDirected_ = true;
    bool hasNodes_ = false;
    bool hasNumberID_ = false;
    bool hasNumberEnd_ = false;
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
