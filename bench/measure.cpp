// Takes one measure of one size and prints it as one line of JSON; `bench/run` starts it again and
// again. Also makes the files that measures and peers read, and describes the data.
#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "generated_graphs.h"
#include "generated_tables.h"
#include "measures.h"
#include "shape.h"

namespace depcompare::bench {

namespace {

std::vector<Measure> allMeasures() {
    std::vector<Measure> all;
    for (const auto measures : {libraryMeasures(), viewMeasures(), fileMeasures()}) {
        all.insert(all.end(), measures.begin(), measures.end());
    }
    return all;
}

void takeMeasure(const std::string& name, const MeasureOptions& options) {
    const std::vector<Measure> measures = allMeasures();
    const auto found = std::ranges::find(measures, name, &Measure::name);
    if (found == measures.end()) {
        throw std::runtime_error("no measure of this name");
    }
    WorkFigures figures;
    Json line{{"measure", name}, {"files", options.files}};
    line.update(found->take(options, figures));
    if (options.countAllocations) {
        line.update({{"allocations", figures.allocations},
                     {"heap_result", figures.heapResult},
                     {"heap_peak", figures.heapPeak}});
    } else {
        line.update({{"cpu_seconds", figures.cpuSeconds},
                     {"wall_seconds", figures.wallSeconds},
                     {"resident_result", figures.residentResult},
                     {"resident_peak", figures.residentPeak}});
    }
    std::cout << line.dump() << '\n';
}

template <class Write>
void writeFile(const std::filesystem::path& path, Write write) {
    std::ofstream out(path, std::ios::binary);
    write(out);
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void writeFiles(const MeasureOptions& options, bool graphML) {
    const GeneratedPair pair = generatePair(options.files);
    std::filesystem::create_directories(options.folder);
    for (std::size_t side = 0; side < pair.sides.size(); ++side) {
        if (graphML) {
            writeFile(dataFile(options, side, ".graphml"),
                      [&](std::ostream& out) { writeGraphML(pair, side, out); });
        } else {
            writeFile(dataFile(options, side, ".files.tsv"),
                      [&](std::ostream& out) { writeFileTable(pair, side, out); });
            writeFile(dataFile(options, side, ".dependencies.tsv"),
                      [&](std::ostream& out) { writeDependencyTable(pair, side, out); });
        }
    }
}

void run(const std::string& command, const MeasureOptions& options) {
    if (command == "list") {
        for (const Measure& measure : allMeasures()) {
            std::cout << measure.name << '\n';
        }
    } else if (command == "shape") {
        printShape(std::cout, generatePair(options.files));
    } else if (command == "graphml" || command == "tables") {
        writeFiles(options, command == "graphml");
    } else {
        takeMeasure(command, options);
    }
}

}  // namespace

}  // namespace depcompare::bench

int main(int argc, char** argv) {
    std::string command;
    depcompare::bench::MeasureOptions options;
    CLI::App app("Takes one measure and prints it as one line of JSON.");
    app.add_option("measure", command,
                   "the measure; list: their names; shape: a table of the data; graphml, tables: "
                   "writes the files that are read")
        ->required();
    app.add_option("--files", options.files, "files on the left side")
        ->check(CLI::Range(100, 500'000));
    app.add_option("--folder", options.folder, "where the files are that are read");
    app.add_flag("--count", options.countAllocations, "count allocations instead of time");
    CLI11_PARSE(app, argc, argv);
    try {
        depcompare::bench::run(command, options);
    } catch (const std::exception& error) {
        std::cerr << "bench_measure: " << command << ": " << error.what() << '\n';
        return 2;
    }
}
