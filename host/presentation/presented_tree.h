#pragma once
// A comparison as it is shown: its tree under the filters that are on, a table for each entry.
//
// The view model of an entry is made when its table or its metrics are asked for. Only its numbers
// are kept, so that no more than one table is in memory.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include <comparisons/view_model.h>
#include <comparisons/view_model_factory.h>
#include <comparisons/viewmodel/match.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_tree_filter.h>
#include <dependency/comparisons/view_model_factories.h>

#include "presentation/enabled_filters.h"

namespace depcompare {

/// How many entries of a tree there are of each kind.
struct EntryCounts {
    std::size_t graphs = 0;
    std::size_t files = 0;
    std::size_t groups = 0;

    void count(const dependency::comparisons::Item& item);
    [[nodiscard]] std::size_t all() const { return graphs + files + groups; }
};

struct HiddenByFilter {
    Filters filter;
    EntryCounts entries;
    std::size_t rows = 0;
};

/// A row is visible where its table shows it and its entry is visible. What two filters hide
/// belongs to the first.
struct Visibility {
    ::comparisons::RowCount entries;
    ::comparisons::RowCount rows;
    std::vector<HiddenByFilter> hidden;  ///< by filter, in the order of the filters
};

class PresentedTree final : public dependency::comparisons::FilteredGraphTree {
  public:
    using Match = ::comparisons::viewmodel::tree::Match;
    using ViewModel = dependency::comparisons::FilteredViewModel;
    using ComparedEntry = ::comparisons::TreeEntry<dependency::comparisons::ItemEdit>;

    /// Requires: `comparison` non-null, `filters` in order.
    PresentedTree(std::shared_ptr<const dependency::comparisons::GraphComparison> comparison,
                  EnabledFilters filters);

    [[nodiscard]] const EnabledFilters& filters() const { return filters_; }
    [[nodiscard]] const ComparedEntry& compared(Match match) const {
        return (*comparison_)[vertex(match)];
    }

    /// Returns: those of the rows that the filters leave; empty where nothing compared the details.
    [[nodiscard]] std::optional<::comparisons::DiffMetrics<2>> metrics(Match match) const override;

    /// Returns: the rows of the entry's detail; what the filters leave counts as visible.
    [[nodiscard]] ::comparisons::RowCount rowCount(Match match) const;

    /// Returns: a view model whose table shows the rows that the filters leave; null where nothing
    ///          compared the details.
    /// Lifetime: that of the tree.
    [[nodiscard]] std::unique_ptr<ViewModel> shownDetail(Match match) const;

    /// Returns: true where an entry is visible that differs, or a row that differs in a visible
    ///          entry.
    [[nodiscard]] bool showsDifference() const;

    /// Returns: the same, but for properties of files and of the graph.
    [[nodiscard]] bool showsStructuralDifference() const;

    /// Returns: by index of the entry, whether it or anything below it is visible.
    [[nodiscard]] std::vector<bool> leadsToVisible() const;

    /// Complexity: makes the view models of all entries that nobody asked about before.
    [[nodiscard]] Visibility visibility() const;

  private:
    static constexpr std::size_t maxFilters = std::variant_size_v<Filters>;

    /// What is kept of an entry's view model.
    struct Numbers {
        std::optional<::comparisons::DiffMetrics<2>> metrics;
        // Before the first filter, after it, after the second one.
        std::array<std::uint32_t, maxFilters + 1> rows{};
    };

    [[nodiscard]] std::unique_ptr<ViewModel> makeViewModel(Match match) const;
    [[nodiscard]] const Numbers& numbers(Match match) const;
    [[nodiscard]] Numbers countNumbers(Match match) const;
    [[nodiscard]] bool showsDifference(const Entry& entry) const;
    void hideEntries();

    std::shared_ptr<const dependency::comparisons::GraphComparison> comparison_;
    EnabledFilters filters_;
    ::comparisons::FilteredVMFactoryRegistry<Filters, 2> registry_ =
        dependency::comparisons::getTwoFilteredVMFactoryRegistry();
    std::vector<std::uint8_t> hiddenBy_;  // by entry: the filter's place, or that behind the last
    mutable std::vector<std::optional<Numbers>> numbers_;  // by entry, as far as asked for
};

}  // namespace depcompare
