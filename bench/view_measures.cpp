#include <stdexcept>
#include <utility>
#include <vector>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_tree_filter.h>
#include <dependency/comparisons/view_model_factories.h>

#include "measures.h"

namespace depcompare::bench {

namespace {

using ::comparisons::DiffMetrics;
using ::comparisons::RowCount;
using ::comparisons::UnchangedFilter;
using dependency::comparisons::FilteredGraphTree;
using dependency::comparisons::FilteredViewModel;
using dependency::comparisons::Filters;
using dependency::comparisons::GraphComparison;

// A viewer that has every table at hand.
class Viewer final : public FilteredGraphTree {
  public:
    explicit Viewer(const GraphComparison& comparison) : FilteredGraphTree(comparison) {
        const auto registry = dependency::comparisons::getTwoFilteredVMFactoryRegistry();
        viewModels_.reserve(entries().size());
        for (const Entry& entry : entries()) {
            viewModels_.push_back(registry.create(comparison[vertex(entry.match)].detail.get()));
        }
    }

    [[nodiscard]] std::optional<DiffMetrics<2>> metrics(
        ::comparisons::viewmodel::tree::Match match) const override {
        return viewModels_[match->getIndex()]->metrics();
    }

    void filter(const std::vector<Filters>& filters) {
        const FilteredViewModel::FilterRange range(filters);
        for (const auto& viewModel : viewModels_) {
            viewModel->applyFilters(&range);
            viewModel->commit();
        }
        for (const Filters& filter : filters) {
            applyFilter(filter);
        }
    }

    void reset() {
        for (const auto& viewModel : viewModels_) {
            viewModel->resetVisibility();
        }
        resetVisibility();
    }

    [[nodiscard]] RowCount rowCount() const {
        RowCount rows;
        for (const auto& viewModel : viewModels_) {
            rows += viewModel->rowCount();
        }
        return rows;
    }

  private:
    std::vector<std::unique_ptr<FilteredViewModel>> viewModels_;
};

Json described(const Viewer& viewer) {
    const RowCount rows = viewer.rowCount();
    const RowCount entries = viewer.entryCount();
    if (rows.all < entries.all || rows.visible == rows.all || entries.visible == entries.all) {
        throw std::runtime_error("the filters hid nothing");
    }
    return {{"entries", entries.all}, {"rows", rows.all}, {"visible_rows", rows.visible}};
}

// The tables and the tree as they open: made, filtered and committed.
Json measureViewModels(const MeasureOptions& options, WorkFigures& figures) {
    messages::registerMessages();
    const GraphPair graphs = makeGraphPair(options.files);
    const auto comparison =
        dependency::comparisons::compareGraphs(graphs.sides[0], graphs.sides[1]);
    const auto viewer = figuresOf(options.countAllocations, figures, [&] {
        auto opened = std::make_unique<Viewer>(*comparison);
        opened->filter(dependency::comparisons::getDefaultEnabledFilters());
        return opened;
    });
    return described(*viewer);
}

// From the default filter to the other one, in all tables and in the tree.
Json measureApplyFilter(const MeasureOptions& options, WorkFigures& figures) {
    messages::registerMessages();
    const GraphPair graphs = makeGraphPair(options.files);
    const auto comparison =
        dependency::comparisons::compareGraphs(graphs.sides[0], graphs.sides[1]);
    Viewer viewer(*comparison);
    viewer.filter(dependency::comparisons::getDefaultEnabledFilters());
    const std::size_t before = viewer.rowCount().visible;
    figuresOf(options.countAllocations, figures, [&] {
        viewer.reset();
        viewer.filter({UnchangedFilter()});
        return 0;
    });
    if (viewer.rowCount().visible == before) {
        throw std::runtime_error("both filters show the same");
    }
    return described(viewer);
}

}  // namespace

std::span<const Measure> viewMeasures() {
    static constexpr std::array measures{Measure{"viewModels", measureViewModels},
                                         Measure{"applyFilter", measureApplyFilter}};
    return measures;
}

}  // namespace depcompare::bench
