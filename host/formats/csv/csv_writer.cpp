#include "formats/csv/csv_writer.h"

#include <memory>
#include <set>

#include "draft/marked_id.h"
#include "formats/edge_data.h"
#include "output/table_writer.h"

namespace depcompare {

namespace {

using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;

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
    TableWriter table(output, {});
    const auto joined = nodesOfDependencies(graph);
    for (const auto& node : graph.getNodes()) {
        const auto id = idAsRead(node->getID());
        const auto type = node->getType();
        if (!joined.contains(node) || !(*type == *Type::FILE())) {
            table.row({id, u"", type->getID(), u"", u"", u"", u""});
        }
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            const auto& upstream = *dependency->getUpstreamComponent();
            const auto& downstream = *dependency->getDownstreamComponent();
            table.row({id, idAsRead(dependency->getDownstreamNode()->getID()),
                       dependency->getType()->getID(), upstream.getName(), downstream.getName(),
                       upstream.getType()->getID(), downstream.getType()->getID()});
        }
    }
}

}  // namespace depcompare
