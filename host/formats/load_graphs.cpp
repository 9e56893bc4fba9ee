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

struct ReadInput {
    GraphDraft draft;
    std::vector<std::string> tellingKeys;
};

ReadInput readInput(Input& input, const ReadOptions& options) {
    ReadInput read;
    if (options.emptyInputs && input.peek().empty()) {
        read.draft.source = input.name();
        return read;
    }
    read.tellingKeys = tellingKeysOf(input, options.format);
    read.draft = readGraph(input, options.format);
    warnOfEmptiness(read.draft);
    return read;
}

}  // namespace

std::array<LoadedGraph, 2> loadGraphs(std::array<Input, 2> inputs, const ReadOptions& options,
                                      const Stage& stage, const ChooseRenames& chooseRenames) {
    stage(fmt::format("reading {} and {}", inputs[0].name(), inputs[1].name()));
    auto [left, right] =
        onBothSides([&](std::size_t side) { return readInput(inputs[side], options); });
    stage("building the graphs");
    auto graphs =
        buildGraphs({std::move(left.draft), std::move(right.draft)}, options, chooseRenames);
    graphs[0].tellingKeys = std::move(left.tellingKeys);
    graphs[1].tellingKeys = std::move(right.tellingKeys);
    return graphs;
}

LoadedGraph loadGraph(Input input, const ReadOptions& options, const Stage& stage) {
    stage(fmt::format("reading {}", input.name()));
    std::array<GraphDraft, 2> drafts;
    drafts[0] = readInput(input, options).draft;
    stage("building the graph");
    return std::move(buildGraphs(std::move(drafts), options)[0]);
}

}  // namespace depcompare
