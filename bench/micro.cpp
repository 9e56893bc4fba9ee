// Single operations whose cost decides that of a whole comparison.
#include <cstdint>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <comparisons/display_order.h>
#include <depcompare/messages/messages.h>
#include <dependency/comparisons/match_graphs.h>
#include <dependency/graph/graph_builder.h>
#include <fl/i18n/message_catalog.h>
#include <fl/i18n/ustring.h>

#include "generated_text.h"
#include "random.h"

namespace {

using depcompare::bench::Random;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::GraphBuilder;
using dependency::graph::Type;

std::u16string wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

std::u16string id(std::uint32_t file) {
    return wide(depcompare::bench::fileID(file));
}

// File 0 with `count` dependencies, on average 1.3 to one target.
std::shared_ptr<const dependency::graph::Graph> star(std::uint32_t count) {
    GraphBuilder builder;
    const auto type = builder.type(u"include", u"include");
    const auto component = builder.component(u"", type);
    const auto hub = builder.addNode(id(0), id(0), Type::FILE());
    std::vector<std::shared_ptr<dependency::graph::Node>> targets;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (i % 13 < 10) {
            const std::u16string name = id(i + 1);
            targets.push_back(builder.addNode(name, name, Type::FILE()));
        }
        builder.addDependency(wide(std::to_string(i)), hub, targets[i % targets.size()], type,
                              component, component);
    }
    return builder.finish();
}

std::shared_ptr<const dependency::graph::Graph> oneFile(std::int64_t properties) {
    GraphBuilder builder;
    std::vector<dependency::graph::Property> all;
    for (std::int64_t i = 0; i < properties; ++i) {
        all.emplace_back(wide("property" + std::to_string(i)),
                         wide("a value of twenty-five " + std::to_string(i)));
    }
    builder.addNode(id(0), id(0), Type::FILE(), std::move(all));
    return builder.finish();
}

void createParallelDependencies(benchmark::State& state) {
    const auto graph = star(static_cast<std::uint32_t>(state.range(0)));
    const auto hub = *graph->getNodes().begin();
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(ParallelDependencies::createParallelDependencies(graph, hub));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(createParallelDependencies)->Arg(8)->Arg(2600);

void lessThanImpl(benchmark::State& state) {
    const auto graph = star(26);
    const auto groups =
        ParallelDependencies::createParallelDependencies(graph, *graph->getNodes().begin());
    std::size_t at = 0;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(dependency::comparisons::detail::lessThanImpl(
            groups[at % groups.size()], groups[(at + 7) % groups.size()]));
        ++at;
    }
}
BENCHMARK(lessThanImpl);

// The difference between two arguments is what properties cost.
void matchGraphsOfOneFile(benchmark::State& state) {
    const auto left = oneFile(state.range(0));
    const auto right = oneFile(state.range(0));
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(dependency::comparisons::matchGraphs(left, right));
    }
}
BENCHMARK(matchGraphsOfOneFile)->Arg(0)->Arg(6)->Arg(60);

// All but some children on both sides, a share of `1 / range` of them at another place.
void displayOrder(benchmark::State& state) {
    constexpr std::uint32_t count = 100'000;
    Random random(1);
    std::vector<std::uint32_t> right(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        right[i] = i;
    }
    for (std::int64_t i = 0; i < count / state.range(0); ++i) {
        std::swap(right[random.below(count)], right[random.below(count)]);
    }
    std::vector<comparisons::ChildPositions> children(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        const bool matched = i % 50 != 0;
        children[i].positions[comparisons::Side::left] = i;
        if (matched) {
            children[i].positions[comparisons::Side::right] = right[i];
        }
        children[i].matched = matched;
    }
    random.shuffle(children);
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(comparisons::displayOrder(children));
    }
}
BENCHMARK(displayOrder)->Arg(100'000)->Arg(20)->Unit(benchmark::kMillisecond);

void messageFound(benchmark::State& state) {
    depcompare::messages::registerMessages();
    const fl::i18n::MessageID message("ORBITA:dependency:comparisons", "checksum");
    const fl::i18n::Locale german("de_DE");
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(fl::i18n::MessageCatalog::get_message(message, german));
    }
}
BENCHMARK(messageFound);

void messageMissing(benchmark::State& state) {
    depcompare::messages::registerMessages();
    const fl::i18n::MessageID message("ORBITA:dependency:comparisons", "language");
    const fl::i18n::Locale german("de_DE");
    while (state.KeepRunning()) {
        try {
            benchmark::DoNotOptimize(fl::i18n::MessageCatalog::get_message(message, german));
        } catch (const fl::i18n::MessageNotFound&) {
            continue;
        }
    }
}
BENCHMARK(messageMissing);

void toLower(benchmark::State& state) {
    const std::u16string text =
        state.range(0) == 0 ? u"Rendering_Cache_Table.cpp" : u"R\u00c9ndering_Cache_T\u00c4ble.cpp";
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(fl::i18n::to_lower(text));
    }
}
BENCHMARK(toLower)->ArgName("beyondAscii")->Arg(0)->Arg(1);

}  // namespace
