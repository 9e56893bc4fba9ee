#include "formats/jgf/jgf_writer.h"

#include <string>
#include <string_view>
#include <utility>

#include <fl/i18n/ustring.h>

#include "draft/marked_id.h"
#include "formats/edge_data.h"
#include "output/json_writer.h"

namespace depcompare {

namespace {

using dependency::graph::Component;
using dependency::graph::Dependency;
using dependency::graph::Graph;
using dependency::graph::Node;
using fl::i18n::ustring_to_utf8;

template <class Carrier>
void writeProperties(std::string_view name, const Carrier& carrier, JsonWriter& json) {
    bool any = false;
    for (const auto& key : carrier.getPropertyKeys()) {
        if (!std::exchange(any, true)) {
            json.key(name);
            json.beginObject();
        }
        json.member(ustring_to_utf8(key), carrier.getProperty(key));
    }
    if (any) {
        json.endObject();
    }
}

void writeNode(const Node& node, JsonWriter& json) {
    json.breakLine();
    json.key(ustring_to_utf8(idAsRead(node.getID())));
    json.beginObject();
    json.member("label", node.getName());
    json.key("metadata");
    json.beginObject();
    json.member("type", node.getType()->getID());
    // In an object of their own, so that no key of a property is taken for the type.
    writeProperties("properties", node, json);
    json.endObject();
    json.endObject();
}

void writeEdge(const Dependency& dependency, JsonWriter& json) {
    json.breakLine();
    json.beginObject();
    json.member("source", idAsRead(dependency.getUpstreamNode()->getID()));
    json.member("target", idAsRead(dependency.getDownstreamNode()->getID()));
    json.member("relation", dependency.getType()->getID());
    const Component& upstream = *dependency.getUpstreamComponent();
    const Component& downstream = *dependency.getDownstreamComponent();
    const std::pair<std::string_view, std::u16string> texts[] = {
        {upstreamComponentName, upstream.getName()},
        {downstreamComponentName, downstream.getName()},
        {upstreamComponentTypeName, upstream.getType()->getID()},
        {downstreamComponentTypeName, downstream.getType()->getID()},
    };
    bool any = false;
    for (const auto& [key, text] : texts) {
        if (!text.empty()) {
            if (!std::exchange(any, true)) {
                json.key("metadata");
                json.beginObject();
            }
            json.member(key, text);
        }
    }
    if (any) {
        json.endObject();
    }
    json.endObject();
}

}  // namespace

void writeJGF(const Graph& graph, Output& output) {
    JsonWriter json(output);
    json.beginObject();
    json.key("graph");
    json.beginObject();
    json.key("directed");
    json.boolean(true);
    writeProperties("metadata", graph, json);
    json.key("nodes");
    json.beginObject();
    for (const auto& node : graph.getNodes()) {
        writeNode(*node, json);
    }
    json.endObject();
    json.key("edges");
    json.beginArray();
    for (const auto& node : graph.getNodes()) {
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            writeEdge(*dependency, json);
        }
    }
    json.endArray();
    json.endObject();
    json.endObject();
    output.write("\n");
}

}  // namespace depcompare
