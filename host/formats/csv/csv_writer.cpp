#include "formats/csv/csv_writer.h"

#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include <fl/i18n/ustring.h>

#include "draft/marked_id.h"
#include "formats/edge_data.h"

namespace depcompare {

namespace {

using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;
using fl::i18n::ustring_to_utf8;

std::string field(std::u16string_view text) {
    const std::string written = ustring_to_utf8(text);
    // A line that begins with # is a comment to readers of such tables, ours among them.
    if (written.find_first_of("\",\r\n") == std::string::npos && !written.starts_with('#')) {
        return written;
    }
    std::string quoted = "\"";
    for (const char letter : written) {
        quoted += letter;
        if (letter == '"') {
            quoted += letter;
        }
    }
    return quoted + '"';
}

void writeRow(std::initializer_list<std::u16string_view> fields, Output& output) {
    std::string_view separator;
    for (const std::u16string_view text : fields) {
        output.print("{}{}", separator, field(text));
        separator = ",";
    }
    output.write("\r\n");
}

std::set<std::shared_ptr<const Node>> nodesOfDependencies(const Graph& graph) {
    std::set<std::shared_ptr<const Node>> nodes;
    for (const auto& node : graph.getNodes()) {
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            nodes.insert(node);
            nodes.insert(dependency->getDownstreamNode());
        }
    }
    return nodes;
}

}  // namespace

void writeCSV(const Graph& graph, Output& output) {
    output.print("source,target,type,{},{},{},{}\r\n", upstreamComponentName,
                 downstreamComponentName, upstreamComponentTypeName, downstreamComponentTypeName);
    const auto joined = nodesOfDependencies(graph);
    for (const auto& node : graph.getNodes()) {
        const auto id = idAsRead(node->getID());
        const auto type = node->getType();
        if (!joined.contains(node) || !(*type == *Type::FILE())) {
            writeRow({id, u"", type->getID(), u"", u"", u"", u""}, output);
        }
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            const auto& upstream = *dependency->getUpstreamComponent();
            const auto& downstream = *dependency->getDownstreamComponent();
            writeRow({id, idAsRead(dependency->getDownstreamNode()->getID()),
                      dependency->getType()->getID(), upstream.getName(), downstream.getName(),
                      upstream.getType()->getID(), downstream.getType()->getID()},
                     output);
        }
    }
}

}  // namespace depcompare
