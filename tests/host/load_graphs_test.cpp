#include "formats/load_graphs.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "input/input_error.h"

namespace depcompare {
namespace {

class LoadGraphs : public testing::Test {
  protected:
    // Of tests that run at the same time, each has files of its own.
    [[nodiscard]] static std::string write(const std::string& name, const std::string& content) {
        const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::string path = testing::TempDir() + test + "-" + name;
        std::ofstream(path) << content;
        return path;
    }

    [[nodiscard]] static std::string problemWith(const std::array<std::string, 2>& paths) {
        try {
            static_cast<void>(load(paths));
        } catch (const InputError& error) {
            return error.what();
        }
        return "";
    }

    static std::array<LoadedGraph, 2> load(const std::array<std::string, 2>& paths) {
        return loadGraphs({Input::open(paths[0]), Input::open(paths[1])}, {},
                          [](std::string_view) {});
    }
};

TEST_F(LoadGraphs, everySidesGraphIsItsOwn) {
    for (const auto& [paths, nodes] :
         {std::pair(std::array<std::string, 2>{EXAMPLES "/ninja-v1.8.2.graphml",
                                               EXAMPLES "/ninja-v1.12.1.graphml"},
                    std::array<std::size_t, 2>{137, 166}),
          std::pair(
              std::array<std::string, 2>{EXAMPLES "/axios-0.27.2.dot", EXAMPLES "/axios-1.7.9.dot"},
              std::array<std::size_t, 2>{41, 72}),
          std::pair(std::array<std::string, 2>{EXAMPLES "/axios-0.27.2.json",
                                               EXAMPLES "/mocha-10.8.2.cdx.json.gz"},
                    std::array<std::size_t, 2>{41, 1151})}) {
        const auto loaded = load(paths);
        EXPECT_EQ(loaded[0].nodes, nodes[0]);
        EXPECT_EQ(loaded[1].nodes, nodes[1]);
    }
}

TEST_F(LoadGraphs, ofTwoFaultyFilesTheLeftOneIsTold) {
    const std::string good = write("good", "<graphml/>");
    const std::string bad = write("bad", "<html/>");
    const std::string worse = write("worse", "digraph { ; }");
    EXPECT_EQ(problemWith({good, bad}), bad + ":1: not GraphML: the outermost element is \"html\"");
    EXPECT_EQ(problemWith({bad, worse}).substr(0, bad.size()), bad);
    EXPECT_EQ(problemWith({worse, bad}).substr(0, worse.size()), worse);
    EXPECT_EQ(problemWith({bad, "nowhere"}), "nowhere: No such file or directory");
}

TEST_F(LoadGraphs, dotFilesOfSeveralPairsDoNotMix) {
    const std::array<std::string, 2> paths{write("left", "digraph l { a -> b } "),
                                           write("right", "digraph { r [label=x] } ")};
    std::vector<std::jthread> threads;
    std::vector<std::size_t> nodes(8);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        threads.emplace_back([&, i] {
            const auto loaded = load(paths);
            nodes[i] = loaded[0].nodes * 10 + loaded[1].nodes;
        });
    }
    threads.clear();
    EXPECT_EQ(nodes, std::vector<std::size_t>(8, 21));
}

}  // namespace
}  // namespace depcompare
