#include "formats/load_graphs.h"

#include <utility>

#include <fmt/format.h>

#include "draft/both_sides.h"
#include "formats/read_graph.h"
#include "input/input.h"

namespace depcompare {

namespace {

void warnOfEmptiness(GraphDraft& draft) {
    constexpr std::size_t manyNodes = 10;
    if (draft.nodes.empty()) {
        draft.alarms.emplace_back("the graph has no nodes");
    } else if (draft.edges.empty() && draft.nodes.size() >= manyNodes) {
        draft.alarms.push_back(
            fmt::format("the graph has {} nodes and no dependency", draft.nodes.size()));
    }
}

GraphDraft readDraft(Input& input, const ReadOptions& options) {
    if (options.emptyInputs && input.peek().empty()) {
        GraphDraft draft;
        draft.source = input.name();
        return draft;
    }
    GraphDraft draft = readGraph(input, options.format);
    warnOfEmptiness(draft);
    return draft;
}

}  // namespace

std::array<LoadedGraph, 2> loadGraphs(std::array<Input, 2> inputs, const ReadOptions& options,
                                      const Stage& stage, const ChooseRenames& chooseRenames) {
    stage(fmt::format("reading {} and {}", inputs[0].name(), inputs[1].name()));
    auto drafts = onBothSides([&](std::size_t side) { return readDraft(inputs[side], options); });
    stage("building the graphs");
    return buildGraphs(std::move(drafts), options, chooseRenames);
}

LoadedGraph loadGraph(Input input, const ReadOptions& options, const Stage& stage) {
    stage(fmt::format("reading {}", input.name()));
    std::array<GraphDraft, 2> drafts;
    drafts[0] = readDraft(input, options);
    stage("building the graph");
    return std::move(buildGraphs(std::move(drafts), options)[0]);
}

}  // namespace depcompare
