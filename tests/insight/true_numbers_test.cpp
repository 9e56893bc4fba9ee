// Two pairs of real projects, with numbers that a program of another kind computed.
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include <dependency/insight/areas.h>
#include <dependency/insight/causes.h>
#include <dependency/insight/cycles.h>
#include <dependency/insight/reach.h>

#include "draft/marked_id.h"
#include "formats/load_graphs.h"

namespace depcompare {
namespace {

using namespace dependency::insight;

struct Truth {
    const char* left;
    const char* right;
    LinkCauses added;
    LinkCauses removed;
    ChangeCauses changed;
    BySide<std::size_t> others;  // gone, new
    BySide<std::uint64_t> pairs;
    BySide<std::size_t> cycles;
    std::size_t depth;
    std::size_t areas;
};

void PrintTo(const Truth& truth, std::ostream* out) {
    *out << truth.left;
}

class TrueNumbers : public testing::TestWithParam<Truth> {};

TEST_P(TrueNumbers, areFound) {
    const Truth& truth = GetParam();
    const auto path = [](const char* name) { return std::string(EXAMPLES "/") + name; };
    const auto loaded = loadGraphs({Input::open(path(truth.left)), Input::open(path(truth.right))},
                                   {}, [](std::string_view) {});
    const LinkGraph graph(loaded[0].graph, loaded[1].graph,
                          {.displayedID = [](const dependency::graph::Node& node) {
                              return idAsRead(node.getID());
                          }});

    const Causes causes = findCauses(graph);
    EXPECT_EQ(causes.added, truth.added);
    EXPECT_EQ(causes.removed, truth.removed);
    EXPECT_EQ(causes.changed, truth.changed);
    const OtherNodes others = findOtherNodes(graph);
    EXPECT_EQ(others.removed.size(), truth.others.left);
    EXPECT_EQ(others.added.size(), truth.others.right);
    const Reach reach = findReach(graph).value();
    EXPECT_EQ(reach.sides.left.pairs, truth.pairs.left);
    EXPECT_EQ(reach.sides.right.pairs, truth.pairs.right);
    const Cycles cycles = findCycles(graph);
    EXPECT_EQ(cycles.groups, truth.cycles);
    EXPECT_EQ(cycles.unchanged, truth.cycles.left);
    const Areas areas = findAreas(graph);
    EXPECT_EQ(areas.depth, truth.depth);
    EXPECT_EQ(areas.areas.size(), truth.areas);
}

INSTANTIATE_TEST_SUITE_P(RealProjects, TrueNumbers,
                         testing::Values(Truth{"ninja-v1.8.2.graphml",
                                               "ninja-v1.12.1.graphml",
                                               {.file = 78, .target = 25, .rewiring = 32},
                                               {.file = 0, .target = 2, .rewiring = 22},
                                               {.components = 119, .types = 2, .ends = 0},
                                               {2, 13},
                                               {1'235, 1'755},
                                               {0, 0},
                                               3,
                                               2},
                                         Truth{"redis-6.2.0.graphml",
                                               "redis-7.4.0.graphml",
                                               {.file = 608, .target = 135, .rewiring = 139},
                                               {.file = 62, .target = 38, .rewiring = 43},
                                               {.components = 14, .types = 4, .ends = 0},
                                               {4, 16},
                                               {10'237, 18'779},
                                               {1, 1},
                                               3,
                                               19}),
                         [](const auto& truth) { return truth.index == 0 ? "ninja" : "redis"; });

}  // namespace
}  // namespace depcompare
