#include <stdexcept>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/match_graphs.h>

#include "bound.h"
#include "generated_graphs.h"
#include "item_counts.h"
#include "measures.h"

namespace depcompare::bench {

namespace {

Json toJson(const PairCounts& counts) {
    return {counts.removed, counts.added, counts.common, counts.changed};
}

// A measure of something that did not do its work is none.
Json pairing(ItemCounts found, const ItemCounts& expected, bool findsChangedFiles) {
    if (!findsChangedFiles) {
        found.files.changed = expected.files.changed;
    }
    if (found != expected) {
        throw std::runtime_error("wrong counts: files " + toJson(found.files).dump() + ", groups " +
                                 toJson(found.groups).dump() + " instead of " +
                                 toJson(expected.files).dump() + ", " +
                                 toJson(expected.groups).dump());
    }
    return {{"entries", found.entries()},
            {"counts", {{"files", toJson(found.files)}, {"groups", toJson(found.groups)}}}};
}

Json measureBound(const MeasureOptions& options, WorkFigures& figures) {
    const GraphPair graphs = makeGraphPair(options.files);
    const BoundResult result = figuresOf(options.countAllocations, figures, [&] {
        return pairAtTheBound(graphs.sides[0], graphs.sides[1]);
    });
    return pairing(result.counts, graphs.expected, false);
}

Json measureMatchGraphs(const MeasureOptions& options, WorkFigures& figures) {
    const GraphPair graphs = makeGraphPair(options.files);
    const auto edits = figuresOf(options.countAllocations, figures, [&] {
        return dependency::comparisons::matchGraphs(graphs.sides[0], graphs.sides[1]);
    });
    ItemCounts found;
    for (const auto& edit : edits) {
        addTo(found, edit);
    }
    return pairing(found, graphs.expected, true);
}

Json measureCompareGraphs(const MeasureOptions& options, WorkFigures& figures) {
    messages::registerMessages();
    const GraphPair graphs = makeGraphPair(options.files);
    const auto comparison = figuresOf(options.countAllocations, figures, [&] {
        return dependency::comparisons::compareGraphs(graphs.sides[0], graphs.sides[1]);
    });
    ItemCounts found;
    for (const auto vertex : comparison->entries()) {
        addTo(found, (*comparison)[vertex].edit);
        if (!(*comparison)[vertex].detail.valid()) {
            throw std::runtime_error("an entry without its detail comparison");
        }
    }
    return pairing(found, graphs.expected, true);
}

}  // namespace

GraphPair makeGraphPair(std::uint32_t files) {
    const GeneratedPair pair = generatePair(files);
    return {.sides = {makeGraph(pair, 0), makeGraph(pair, 1)}, .expected = pair.expected};
}

std::span<const Measure> libraryMeasures() {
    static constexpr std::array measures{Measure{"bound", measureBound},
                                         Measure{"matchGraphs", measureMatchGraphs},
                                         Measure{"compareGraphs", measureCompareGraphs}};
    return measures;
}

}  // namespace depcompare::bench
