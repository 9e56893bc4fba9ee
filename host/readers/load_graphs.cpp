#include "readers/load_graphs.h"

#include <utility>

#include <fmt/format.h>

#include "readers/both_sides.h"
#include "readers/input.h"
#include "readers/read_graph.h"

namespace depcompare {

std::array<LoadedGraph, 2> loadGraphs(const std::array<std::string, 2>& paths,
                                      const ReadOptions& options,
                                      const std::function<void(const std::string&)>& stage) {
    // Both are opened before either is read: a missing file must not wait for standard input.
    std::array inputs{Input::open(paths[0], options.limits), Input::open(paths[1], options.limits)};
    stage(fmt::format("reading {} and {}", inputs[0].name(), inputs[1].name()));
    auto drafts =
        onBothSides([&](std::size_t side) { return readGraph(inputs[side], options.format); });
    stage("building the graphs");
    return buildGraphs(std::move(drafts), options);
}

LoadedGraph loadGraph(const std::string& path, const ReadOptions& options) {
    Input input = Input::open(path, options.limits);
    std::array<GraphDraft, 2> drafts;
    drafts[0] = readGraph(input, options.format);
    return std::move(buildGraphs(std::move(drafts), options)[0]);
}

}  // namespace depcompare
