// What threads may do at a time, from the first use of everything on.
#include <array>
#include <barrier>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/match_graphs.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/table_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using GraphPointer = std::shared_ptr<const graph::Graph>;

GraphPointer leftGraph() {
    return test::graphOf(
        "A -> B [from=x]\nA -> B [from=y type=call]\nB -> lib\nlib [type=external]\n"
        "A [checksum=1 size=2]\ngraph [timestamp=x]\n@ 2024-05-06 07:08:09");
}
GraphPointer rightGraph() {
    return test::graphOf(
        "A -> B [from=x]\nB -> A\nA [checksum=2]\n"
        "graph [timestamp=x license=MIT]\n@ 2024-05-07 07:08:09");
}

// Everything that a viewer shows of the entries, whose details are compared once more by the
// subcomparators given.
template <class Subcomparators>
std::string shown(const GraphPointer& left, const GraphPointer& right,
                  const Subcomparators& subcomparators) {
    std::string text = std::to_string(matchGraphs(left, right).size()) + '\n';
    const auto comparison = compareGraphs(left, right);
    text += get_type(*comparison) + '\n' + test::treeOf(*comparison);
    const auto registry = getTwoFilteredVMFactoryRegistry();
    for (const auto vertex : comparison->entries()) {
        const auto& entry = (*comparison)[vertex];
        const auto viewModel = registry.create(entry.detail.get());
        viewModel->applyFilter(getDefaultEnabledFilters().at(0));
        viewModel->commit();
        text += viewModel->type() + '\n' + test::tablesOf(*viewModel);
        for (const auto& subcomparator : subcomparators) {
            if (subcomparator->canCompare(entry.edit)) {
                text += test::rowsOf(subcomparator->compare(entry.edit).get());
            }
        }
    }
    return text;
}

TEST(Threads, shareGraphsAndSubcomparatorsAndUseEverythingForTheFirstTimeTogether) {
    constexpr std::size_t count = 4;
    const test::Catalogs catalogs;
    const std::array<std::unique_ptr<::comparisons::Subcomparator<ItemEdit>>, 3> subcomparators{
        std::make_unique<GraphSubcomparator>(), std::make_unique<NodeSubcomparator>(),
        std::make_unique<DependencySubcomparator>()};
    std::array<GraphPointer, count> lefts;
    std::array<GraphPointer, count> rights;
    std::array<std::string, count> texts;
    std::barrier together(count);
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            together.arrive_and_wait();
            lefts[i] = leftGraph();
            rights[i] = rightGraph();
            together.arrive_and_wait();
            for (const GraphPointer& left : lefts) {
                texts[i] += shown(left, rights[0], subcomparators);
            }
        });
    }
    threads.clear();
    std::string expected;
    for (std::size_t i = 0; i < count; ++i) {
        expected += shown(lefts[0], rights[0], subcomparators);
    }
    for (const std::string& text : texts) {
        EXPECT_EQ(text, expected);
    }
}

}  // namespace
}  // namespace dependency::comparisons
