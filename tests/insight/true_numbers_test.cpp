// Two pairs of real projects, with numbers that a program of another kind computed.
#include <string>
#include <tuple>

#include <fmt/format.h>
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

std::string numbersOf(const std::string& left, const std::string& right) {
    const std::string folder = EXAMPLES "/";
    const auto loaded =
        loadGraphs({Input::open(folder + left), Input::open(folder + right)}, {}, [](auto) {});
    const LinkGraph graph(loaded[0].graph, loaded[1].graph,
                          {.displayedID = [](const dependency::graph::Node& node) {
                              return idAsRead(node.getID());
                          }});
    const auto [added, removed, changed, targets, rewired] = findCauses(graph);
    const OtherNodes others = findOtherNodes(graph);
    const Reach reach = findReach(graph).value();
    const Cycles cycles = findCycles(graph);
    const Areas areas = findAreas(graph);
    return fmt::format(
        "added {}+{}+{}, removed {}+{}+{}, changed {}+{}+{}, others -{} +{}, reach {} {}, "
        "cycles {} {} ({} unchanged), {} areas of depth {}",
        added.file, added.target, added.rewiring, removed.file, removed.target, removed.rewiring,
        changed.components, changed.types, changed.ends, others.removed.size(), others.added.size(),
        reach.sides.left.pairs, reach.sides.right.pairs, cycles.groups.left, cycles.groups.right,
        cycles.unchanged, areas.areas.size(), areas.depth);
}

TEST(TrueNumbers, areFound) {
    EXPECT_EQ(numbersOf("ninja-v1.8.2.graphml", "ninja-v1.12.1.graphml"),
              "added 78+25+32, removed 0+2+22, changed 119+2+0, others -2 +13, reach 1235 1755, "
              "cycles 0 0 (0 unchanged), 2 areas of depth 3");
    EXPECT_EQ(numbersOf("redis-6.2.0.graphml", "redis-7.4.0.graphml"),
              "added 608+135+139, removed 62+38+43, changed 14+4+0, others -4 +16, "
              "reach 10237 18779, cycles 1 1 (1 unchanged), 19 areas of depth 3");
}

}  // namespace
}  // namespace depcompare
