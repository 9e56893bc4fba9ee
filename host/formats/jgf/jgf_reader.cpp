#include "formats/jgf/jgf_reader.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/edge_data.h"
#include "formats/formats.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

class JGFReader final : public JsonGraphReader {
  public:
    explicit JGFReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {valuesAt({"graph", "{}"}), valuesAt({"graph", "nodes", "{}"}),
                           valuesAt({"graph", "nodes", "*"}), objectsAt({"graph", "edges", "*"}),
                           valuesAt({"graph", "hyperedges", "*"}),
                           valuesAt({"graph", "metadata", "{}"}), valuesAt({"graphs", "*", "{}"}),
                           valuesAt({"graphs", "*", "nodes", "{}"}),
                           valuesAt({"graphs", "*", "nodes", "*"}),
                           objectsAt({"graphs", "*", "edges", "*"}),
                           valuesAt({"graphs", "*", "hyperedges", "*"}),
                           valuesAt({"graphs", "*", "metadata", "{}"})},
               .required = {"graph", "graphs"},
               .excludesOthers = true,
               .known = {"$schema", "label", "type", "metadata"}});
        settleForeignMembers();
        if (hyperedges_ != 0) {
            sink_.warn(ignoredHyperedges(hyperedges_));
        }
        requireDirections();
        data_.warnOfIgnored("metadata");
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        requireOneGraph(path);
        hasMembers_ |= isMemberOf(path, "nodes") || isMemberOf(path, "edges");
        if (isMemberOf(path, "nodes")) {
            addNode(path.last(), value);
        } else if (isMemberOf(path, "edges")) {
            addEdge(value);
        } else if (isMemberOf(path, "hyperedges")) {
            ++hyperedges_;
        } else if (isMemberOf(path, "metadata")) {
            sink_.setGraphProperty(path.last().key, textOf(value));
        } else if (isInGraph(path, 1) && path.last().key == "directed") {
            edgesAreDirected_ = truthOf(value, "directed", sink_).value_or(true);
        } else if (isInGraph(path, 1) && value.is_structured()) {
            foreignMembers_.add(path.last().key);
        } else if (isInGraph(path, 1) && path.last().key != "$schema") {
            labels_.emplace_back(path.last().key, textOf(value));
        }
    }

  private:
    static bool isInGraph(const JsonPath& path, std::size_t depth) {
        return path.depth() == depth + (path[1].isElement ? 2 : 1);
    }
    static bool isMemberOf(const JsonPath& path, std::string_view collection) {
        return isInGraph(path, 2) && path[path.depth() - 2].key == collection;
    }

    void requireOneGraph(const JsonPath& path) {
        if (path[1].isElement && path[1].index != 0) {
            bytes_.fail("more than one graph in the file");
        }
    }

    // Other formats call their outermost member "graph" too.
    void settleForeignMembers() {
        if (!foreignMembers_.empty() && !hasMembers_) {
            bytes_.fail(fmt::format("not JSON Graph Format: no nodes and no edges, but {}",
                                    foreignMembers_.text()));
        }
        sink_.warnOfUnknown("members of the graph", foreignMembers_);
    }

    void addNode(const JsonStep& step, const json& value) {
        // The nodes of version 1 are an array, those of version 2 members named by their IDs.
        if (step.isElement && !(value.is_object() && value.contains("id"))) {
            bytes_.fail("node without \"id\"");
        }
        if (!value.is_object() && !value.is_null()) {
            bytes_.fail(fmt::format("node {} is not an object", inQuotes(step.key)));
        }
        const std::string id = step.isElement ? memberText(value, "id") : step.key;
        const NodeNumber node = sink_.addNode(id);
        if (const json& label = memberOf(value, "label"); !label.is_null()) {
            sink_.setName(node, textOf(label));
        }
        for (const auto& [key, property] : membersOf(value, "metadata", sink_).items()) {
            addProperty(node, key, property);
        }
    }

    void addProperty(NodeNumber node, const std::string& key, const json& value) {
        if (key == "type") {
            sink_.setType(node, textOf(value));
        } else if (key == "properties" && value.is_object()) {
            for (const auto& [innerKey, innerValue] : value.items()) {
                sink_.setProperty(node, innerKey, textOf(innerValue));
            }
        } else {
            sink_.setProperty(node, key, textOf(value));
        }
    }

    void addEdge(const json& value) {
        const std::string source = memberText(value, "source");
        const std::string target = memberText(value, "target");
        if (!value.contains("source") || !value.contains("target")) {
            bytes_.fail("edge without \"source\" or \"target\"");
        }
        if (!truthOf(memberOf(value, "directed"), "directed", sink_).value_or(true)) {
            sink_.failForUndirected(source, target);
        }
        if (!firstUndecided_ && !value.contains("directed")) {
            firstUndecided_.emplace(source, target);
        }
        const std::size_t edge = sink_.addEdge(source, target);
        for (const auto& [key, datum] : membersOf(value, "metadata", sink_).items()) {
            if (!datum.is_null()) {
                data_.set(edge, key, textOf(datum), key);
            }
        }
        if (const json& relation = memberOf(value, "relation"); !relation.is_null()) {
            sink_.set(edge, EdgeColumn::type, textOf(relation));
        }
    }

    void requireDirections() {
        if (!edgesAreDirected_ && firstUndecided_) {
            sink_.failForUndirected(firstUndecided_->first, firstUndecided_->second);
        }
        for (const auto& [key, text] : labels_) {
            sink_.setDefaultGraphProperty(key, text);
        }
    }

    std::vector<std::pair<std::string, std::string>> labels_;  // of the graph, beside its metadata
    // The ends of the first edge that leaves its direction to the graph.
    std::optional<std::pair<std::string, std::string>> firstUndecided_;
    QuotedNames foreignMembers_;  // of the graph
    NamedEdgeData data_{sink_};
    bool hasMembers_ = false;
    bool edgesAreDirected_ = true;
    std::size_t hyperedges_ = 0;
};

}  // namespace

bool looksLikeJGF(const JsonShape& shape) {
    // Several objects under "graph" are of this format, written wrong; texts are a list of madge.
    const bool hasGraph =
        shape.has({"graph"}, JsonKind::object) || shape.has({"graph", "*"}, JsonKind::object);
    return (hasGraph && !shape.has({"nodes"}) && !looksLikeConan(shape) && !looksLikeNx(shape)) ||
           shape.has({"graphs"}, JsonKind::array) || shape.has({"graphs"}, JsonKind::object);
}

GraphDraft readJGF(Input& input) {
    return JGFReader(input).read();
}

}  // namespace depcompare
