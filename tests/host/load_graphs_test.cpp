#include "formats/load_graphs.h"

#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace depcompare {
namespace {

std::array<LoadedGraph, 2> load(Input left, Input right) {
    return loadGraphs({std::move(left), std::move(right)}, {}, [](std::string_view) {});
}

TEST(LoadGraphs, everySidesGraphIsItsOwn) {
    const std::tuple<const char*, const char*, std::size_t, std::size_t> cases[] = {
        {"ninja-v1.8.2.graphml", "ninja-v1.12.1.graphml", 137, 166},
        {"axios-0.27.2.dot", "axios-1.7.9.dot", 41, 72},
        {"axios-0.27.2.json", "mocha-10.8.2.cdx.json.gz", 41, 1151},
    };
    for (const auto& [left, right, leftNodes, rightNodes] : cases) {
        const std::string folder = EXAMPLES "/";
        const auto loaded = load(Input::open(folder + left), Input::open(folder + right));
        EXPECT_EQ(loaded[0].nodes, leftNodes);
        EXPECT_EQ(loaded[1].nodes, rightNodes);
    }
}

TEST(LoadGraphs, dotFilesOfSeveralPairsDoNotMix) {
    std::vector<std::size_t> nodes(8);
    {
        std::vector<std::jthread> threads;
        threads.reserve(nodes.size());
        for (std::size_t& counted : nodes) {
            threads.emplace_back([&counted] {
                const auto loaded = load(Input::fromText("left", "digraph l { a -> b }"),
                                         Input::fromText("right", "digraph { r [label=x] }"));
                counted = loaded[0].nodes * 10 + loaded[1].nodes;
            });
        }
    }
    EXPECT_EQ(nodes, std::vector<std::size_t>(8, 21));
}

}  // namespace
}  // namespace depcompare
