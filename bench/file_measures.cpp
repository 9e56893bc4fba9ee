#include <stdexcept>
#include <utility>

#include "expat_parse.h"
#include "measures.h"
#ifdef BENCH_HAS_READERS
#include "draft/build_graphs.h"
#include "formats/graphml/graphml_reader.h"
#endif

namespace depcompare::bench {

namespace {

Json measureExpat(const MeasureOptions& options, WorkFigures& figures) {
    const std::size_t elements = figuresOf(options.countAllocations, figures, [&] {
        return parseWithExpat(dataFile(options, 0, ".graphml")) +
               parseWithExpat(dataFile(options, 1, ".graphml"));
    });
    return {{"elements", elements}};
}

#ifdef BENCH_HAS_READERS
Json measureReadGraphML(const MeasureOptions& options, WorkFigures& figures) {
    const auto graphs = figuresOf(options.countAllocations, figures, [&] {
        std::array<GraphDraft, 2> drafts;
        for (std::size_t side = 0; side < drafts.size(); ++side) {
            Input input = Input::open(dataFile(options, side, ".graphml").string());
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

}  // namespace

std::filesystem::path dataFile(const MeasureOptions& options, std::size_t side,
                               std::string_view ending) {
    constexpr std::array names{"left-", "right-"};
    return options.folder / (names[side] + std::to_string(options.files)).append(ending);
}

std::span<const Measure> fileMeasures() {
    static constexpr std::array measures{Measure{"expat", measureExpat},
#ifdef BENCH_HAS_READERS
                                         Measure{"readGraphML", measureReadGraphML}
#endif
    };
    return measures;
}

}  // namespace depcompare::bench
