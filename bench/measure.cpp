// Takes one measure of one size and prints it as one line of JSON; `bench/run` starts it again and
// again. Also makes the GraphML files and describes the data.
#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/match_graphs.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "bound.h"
#include "expat_parse.h"
#include "generated_graphs.h"
#include "generator.h"
#include "item_counts.h"
#include "process_figures.h"
#include "shape.h"
#ifdef BENCH_HAS_READERS
#include "readers/build_graphs.h"
#include "readers/graphml_reader.h"
#endif

namespace depcompare::bench {

namespace {

using Json = nlohmann::ordered_json;

struct Options {
    std::string measure;
    std::uint32_t files = 10'000;
    std::filesystem::path folder = ".";
    bool countAllocations = false;
};

struct Graphs {
    std::array<std::shared_ptr<const dependency::graph::Graph>, 2> sides;
    ItemCounts expected;
};

Graphs makeGraphs(std::uint32_t files) {
    const GeneratedPair pair = generatePair(files);
    return {.sides = {makeGraph(pair, 0), makeGraph(pair, 1)}, .expected = pair.expected};
}

std::filesystem::path graphMLFile(const Options& options, std::size_t side) {
    constexpr std::array names{"left", "right"};
    return options.folder / (names[side] + ("-" + std::to_string(options.files) + ".graphml"));
}

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

Json measureBound(const Options& options, WorkFigures& figures) {
    const Graphs graphs = makeGraphs(options.files);
    const BoundResult result = figuresOf(options.countAllocations, figures, [&] {
        return pairAtTheBound(graphs.sides[0], graphs.sides[1]);
    });
    return pairing(result.counts, graphs.expected, false);
}

Json measureMatchGraphs(const Options& options, WorkFigures& figures) {
    const Graphs graphs = makeGraphs(options.files);
    const auto edits = figuresOf(options.countAllocations, figures, [&] {
        return dependency::comparisons::matchGraphs(graphs.sides[0], graphs.sides[1]);
    });
    ItemCounts found;
    for (const auto& edit : edits) {
        addTo(found, edit);
    }
    return pairing(found, graphs.expected, true);
}

Json measureCompareGraphs(const Options& options, WorkFigures& figures) {
    messages::registerMessages();
    const Graphs graphs = makeGraphs(options.files);
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

Json measureExpat(const Options& options, WorkFigures& figures) {
    const std::size_t elements = figuresOf(options.countAllocations, figures, [&] {
        return parseWithExpat(graphMLFile(options, 0)) + parseWithExpat(graphMLFile(options, 1));
    });
    return {{"elements", elements}};
}

#ifdef BENCH_HAS_READERS
Json measureReadGraphML(const Options& options, WorkFigures& figures) {
    const auto graphs = figuresOf(options.countAllocations, figures, [&] {
        std::array<GraphDraft, 2> drafts;
        for (std::size_t side = 0; side < drafts.size(); ++side) {
            Input input = Input::open(graphMLFile(options, side).string());
            drafts[side] = readGraphML(input);
        }
        return buildGraphs(std::move(drafts));
    });
    const GeneratedPair expected = generatePair(options.files);
    for (std::size_t side = 0; side < graphs.size(); ++side) {
        if (graphs[side].files != expected.sides[side].files.size() ||
            graphs[side].dependencies != expected.sides[side].links.size()) {
            throw std::runtime_error("wrong graph read from " + graphs[side].source);
        }
    }
    return {{"entries", expected.expected.entries()}};
}
#endif

struct Measure {
    std::string_view name;
    Json (*take)(const Options&, WorkFigures&);
};
constexpr std::array measures{
    Measure{"bound", measureBound},
    Measure{"matchGraphs", measureMatchGraphs},
    Measure{"compareGraphs", measureCompareGraphs},
    Measure{"expat", measureExpat},
#ifdef BENCH_HAS_READERS
    Measure{"readGraphML", measureReadGraphML},
#endif
};

void printMeasure(const Measure& measure, const Options& options) {
    WorkFigures figures;
    Json line{{"measure", options.measure}, {"files", options.files}};
    line.update(measure.take(options, figures));
    if (options.countAllocations) {
        line.update({{"allocations", figures.allocations},
                     {"heap_result", figures.heapResult},
                     {"heap_peak", figures.heapPeak}});
    } else {
        line.update({{"cpu_seconds", figures.cpuSeconds},
                     {"resident_result", figures.residentResult},
                     {"resident_peak", figures.residentPeak}});
    }
    std::cout << line.dump() << '\n';
}

void writeFiles(const Options& options) {
    const GeneratedPair pair = generatePair(options.files);
    std::filesystem::create_directories(options.folder);
    for (std::size_t side = 0; side < pair.sides.size(); ++side) {
        std::ofstream out(graphMLFile(options, side), std::ios::binary);
        writeGraphML(pair, side, out);
        if (!out.flush()) {
            throw std::runtime_error("cannot write to " + options.folder.string());
        }
    }
}

void run(const Options& options) {
    if (options.measure == "list") {
        for (const Measure& measure : measures) {
            std::cout << measure.name << '\n';
        }
    } else if (options.measure == "shape") {
        printShape(std::cout, generatePair(options.files));
    } else if (options.measure == "files") {
        writeFiles(options);
    } else {
        const auto* const found = std::ranges::find(measures, options.measure, &Measure::name);
        if (found == measures.end()) {
            throw std::runtime_error("no measure of this name");
        }
        printMeasure(*found, options);
    }
}

}  // namespace

}  // namespace depcompare::bench

int main(int argc, char** argv) {
    depcompare::bench::Options options;
    CLI::App app("Takes one measure and prints it as one line of JSON.");
    app.add_option("measure", options.measure,
                   "the measure; list: their names; shape: a table of the data; files: makes the "
                   "GraphML files")
        ->required();
    app.add_option("--files", options.files, "files on the left side")
        ->check(CLI::Range(100, 500'000));
    app.add_option("--folder", options.folder, "where the GraphML files are");
    app.add_flag("--count", options.countAllocations, "count allocations instead of time");
    CLI11_PARSE(app, argc, argv);
    try {
        depcompare::bench::run(options);
    } catch (const std::exception& error) {
        std::cerr << "bench_measure: " << options.measure << ": " << error.what() << '\n';
        return 2;
    }
}
