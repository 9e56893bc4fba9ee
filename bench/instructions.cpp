// One call of a library function on generated graphs, for valgrind to count its instructions: all
// that happens within `measuredWork` and nothing else.
#include <functional>
#include <iostream>
#include <memory>
#include <string_view>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/match_graphs.h>

#include "generated_graphs.h"
#include "generator.h"

// A name of C, so that it can be told to valgrind.
extern "C" [[gnu::noinline]] void measuredWork(const std::function<void()>& work) {
    work();
    asm volatile("");  // else the call may become a jump, which never returns here
}

int main(int argc, char** argv) {
    using dependency::comparisons::compareGraphs;
    using dependency::comparisons::GraphComparison;
    using dependency::comparisons::matchGraphs;

    if (argc != 3) {
        std::cerr << "usage: bench_instructions matchGraphs|compareGraphs FILES\n";
        return 2;
    }
    const std::string_view function = argv[1];
    const auto pair =
        depcompare::bench::generatePair(static_cast<std::uint32_t>(std::stoul(argv[2])));
    const auto left = depcompare::bench::makeGraph(pair, 0);
    const auto right = depcompare::bench::makeGraph(pair, 1);
    depcompare::messages::registerMessages();
    // Released after the count.
    decltype(matchGraphs(left, right)) edits;
    std::shared_ptr<GraphComparison> comparison;
    if (function == "matchGraphs") {
        measuredWork([&] { edits = matchGraphs(left, right); });
    } else if (function == "compareGraphs") {
        measuredWork([&] { comparison = compareGraphs(left, right); });
    } else {
        std::cerr << "bench_instructions: no function " << function << '\n';
        return 2;
    }
}
