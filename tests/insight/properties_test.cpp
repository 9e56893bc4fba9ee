// What must hold whatever is compared, on random pairs of graphs.
#include <array>
#include <sstream>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <comparisons/edit_type.h>
#include <dependency/comparisons/match_graphs.h>

#include <dependency/insight/renames.h>

#include "insight/insight_text.h"
#include "insight/reference.h"
#include "properties/graph_pairs.h"
#include "support/text_graph.h"

namespace dependency::test {
namespace {

using namespace insight;
using Graph = std::shared_ptr<const graph::Graph>;

// Few links per node and folders, unlike the pairs that comparisons are tried on.
rc::Gen<GraphPair> sparsePairs() {
    return rc::gen::exec([] {
        const auto nodes = *rc::gen::inRange(1, 12);
        const auto links = *rc::gen::inRange(0, 2 * nodes);
        const auto name = [&] {
            const int number = *rc::gen::inRange(0, nodes);
            return std::string(1, static_cast<char>('a' + number % 3)) + '/' +
                   std::string(1, static_cast<char>('x' + number % 2)) + '/' +
                   std::to_string(number);
        };
        GraphPair pair;
        for (int i = 0; i < links; ++i) {
            const std::string line = name() + " -> " + name() + " [id=" + std::to_string(i) +
                                     *rc::gen::element<std::string>("", " type=call") + "]\n";
            const int fate = *rc::gen::inRange(0, 6);
            pair.left += fate == 0 ? "" : line;
            pair.right += fate == 1 ? "" : line;
        }
        return pair;
    });
}

struct Graphs {
    Graph left;
    Graph right;
};

Graphs anyGraphs() {
    const auto pair =
        *rc::gen::oneOf(distinctPairs(), collidingPairs(), sparsePairs()).as("graphs");
    return {graphOf(pair.left), graphOf(pair.right)};
}

RC_GTEST_PROP(Insight, cyclesAndReachAreThoseOfTheReference, ()) {
    const auto [left, right] = anyGraphs();
    const LinkGraph graph(left, right,
                          {.isSoft = [](std::u16string_view type) { return type == u"call"; }});
    for (const Strength strength : {Strength::all, Strength::hard}) {
        RC_ASSERT(textOf(graph, findCycles(graph, strength)) ==
                  textOf(graph, referenceCycles(graph, strength)));
    }
    RC_ASSERT(textOf(graph, findReach(graph).value()) == textOf(graph, referenceReach(graph)));
}

RC_GTEST_PROP(Insight, swappingTheSidesSwapsWhatIsFound, ()) {
    const auto [left, right] = anyGraphs();
    const LinkGraph graph(left, right);
    const LinkGraph swapped(right, left);
    const Cycles cycles = findCycles(graph);
    const Cycles back = findCycles(swapped);
    RC_ASSERT(cycles.families.size() == back.families.size());
    for (std::size_t i = 0; i < cycles.families.size(); ++i) {
        RC_ASSERT(cycles.families[i].groups.left == back.families[i].groups.right);
        RC_ASSERT(cycles.families[i].closing == back.families[i].opened);
    }
    const Reach reach = findReach(graph).value();
    const Reach swappedReach = findReach(swapped).value();
    RC_ASSERT(reach.files.size() == swappedReach.files.size());
    for (std::size_t i = 0; i < reach.files.size(); ++i) {
        RC_ASSERT(reach.files[i].file == swappedReach.files[i].file);
        RC_ASSERT(reach.files[i].gained == swappedReach.files[i].lost);
        RC_ASSERT(reach.files[i].reach.left == swappedReach.files[i].reach.right);
    }
    const Causes causes = findCauses(graph);
    const Causes swappedCauses = findCauses(swapped);
    RC_ASSERT(causes.added == swappedCauses.removed);
    RC_ASSERT(causes.changed == swappedCauses.changed);
    RC_ASSERT(findOtherNodes(graph).added == findOtherNodes(swapped).removed);
    const Areas areas = findAreas(graph);
    const Areas swappedAreas = findAreas(swapped);
    RC_ASSERT(areas.areas.size() == swappedAreas.areas.size());
    for (std::size_t i = 0; i < areas.areas.size(); ++i) {
        RC_ASSERT(areas.areas[i].added == swappedAreas.areas[i].removed);
        RC_ASSERT(areas.areas[i].changed == swappedAreas.areas[i].changed);
        RC_ASSERT(areas.areas[i].out.left == swappedAreas.areas[i].out.right);
    }
}

RC_GTEST_PROP(Insight, aGraphAgainstItselfHasCountsOnly, ()) {
    const Graph any = anyGraphs().left;
    const LinkGraph graph(any, any);
    const Cycles cycles = findCycles(graph);
    RC_ASSERT(cycles.families.empty());
    RC_ASSERT(cycles.unchanged == cycles.groups.left);
    const Reach reach = findReach(graph).value();
    RC_ASSERT(reach.filesAll + reach.linksAll == 0U);
    RC_ASSERT(reach.sides.left == reach.sides.right);
    RC_ASSERT(findAreas(graph).links.empty());
    RC_ASSERT(findOtherNodes(graph) == OtherNodes());
    RC_ASSERT(findCauses(graph) == Causes());
}

RC_GTEST_PROP(Insight, theOrderOfInsertionChangesNothing, ()) {
    const auto pair = *sparsePairs().as("graphs");
    const auto reversed = [](const std::string& text) {
        std::istringstream lines(text);
        std::string result;
        for (std::string line; std::getline(lines, line);) {
            result.insert(0, line.append(1, '\n'));
        }
        return graphOf(result);
    };
    const LinkGraph graph(graphOf(pair.left), graphOf(pair.right));
    const LinkGraph again(reversed(pair.left), reversed(pair.right));
    RC_ASSERT(textOf(graph, findCycles(graph)) == textOf(again, findCycles(again)));
    RC_ASSERT(textOf(graph, *findReach(graph)) == textOf(again, *findReach(again)));
    RC_ASSERT(findAreas(graph) == findAreas(again));
    RC_ASSERT(findCauses(graph) == findCauses(again));
    RC_ASSERT(findRenames(graph) == findRenames(again));
}

RC_GTEST_PROP(Insight, causesAddUpToTheGroupsOfTheComparison, ()) {
    const auto pair = *rc::gen::oneOf(distinctPairs(), sparsePairs()).as("graphs");
    const Graph left = graphOf(pair.left);
    const Graph right = graphOf(pair.right);
    std::array<std::size_t, 4> groups{};
    for (const auto& edit : comparisons::matchGraphs(left, right)) {
        if (std::holds_alternative<comparisons::ParallelDependencies>(
                ::comparisons::anySide(edit))) {
            ++groups.at(static_cast<std::size_t>(::comparisons::editType(edit)));
        }
    }
    const Causes causes = findCauses(LinkGraph(left, right));
    const auto count = [&](::comparisons::EditType type) {
        return groups.at(static_cast<std::size_t>(type));
    };
    RC_ASSERT(causes.added.all() == count(::comparisons::EditType::rightOnly));
    RC_ASSERT(causes.removed.all() == count(::comparisons::EditType::leftOnly));
    RC_ASSERT(causes.changed.all() == count(::comparisons::EditType::changed));
}

}  // namespace
}  // namespace dependency::test
