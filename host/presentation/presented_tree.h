#pragma once
// A comparison as it is shown: its tree under the filters that are on, a table for each entry.
//
// The view model of an entry is made when its table or its metrics are requested. Only its numbers
// are kept, so that no more than one table is in memory.
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <comparisons/view_model.h>
#include <comparisons/view_model_factory.h>
#include <comparisons/viewmodel/match.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_tree_filter.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>

#include "presentation/enabled_filters.h"

namespace depcompare {

enum class EntryKind : std::uint8_t { graph, file, group };

[[nodiscard]] EntryKind kindOf(const dependency::comparisons::Item& item);

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
    EntryCounts differingEntries;  ///< of the entries, those that are not unchanged
    std::size_t differingRows = 0;
};

/// A row is visible if its table shows it and its entry is visible. What two filters hide is counted
/// for the first.
struct Visibility {
    ::comparisons::RowCount entries;
    ::comparisons::RowCount rows;
    std::vector<HiddenByFilter> hidden;  ///< by filter, in the order of the filters
};

/// Properties of files that are part of what is shown even if the non-structural filter is on.
///
/// A changed file that this filter would hide stays visible if such a property differs between both
/// sides. Of its rows, only those of such properties that differ are visible; the filter hides the
/// others.
using TellingKeys = std::vector<std::u16string>;

class PresentedTree final : public dependency::comparisons::FilteredGraphTree {
  public:
    using Match = ::comparisons::viewmodel::tree::Match;
    using ViewModel = dependency::comparisons::FilteredViewModel;
    using ComparedEntry = ::comparisons::TreeEntry<dependency::comparisons::ItemEdit>;

    /// Which IDs left nodes have in their file, by the others that they were given instead.
    using OldIDs = std::map<std::u16string, std::u16string, std::less<>>;

    /// Requires: `comparison` non-null, `filters` in order.
    PresentedTree(std::shared_ptr<const dependency::comparisons::GraphComparison> comparison,
                  EnabledFilters filters, OldIDs oldIDs = {}, TellingKeys telling = {});

    [[nodiscard]] static bool isMoved(Match match);

    /// Returns: for a file that was renamed, its ID in the left file.
    [[nodiscard]] std::optional<std::u16string> oldID(Match match) const;

    [[nodiscard]] const EnabledFilters& filters() const { return filters_; }
    [[nodiscard]] const TellingKeys& telling() const { return telling_; }
    [[nodiscard]] const ComparedEntry& compared(Match match) const {
        return (*comparison_)[vertex(match)];
    }

    /// Returns: those of the rows that the filters leave; nothing if the entry has no detail.
    [[nodiscard]] std::optional<::comparisons::DiffMetrics<2>> metrics(Match match) const override;

    /// Returns: the rows of the entry's detail; what the filters leave counts as visible.
    [[nodiscard]] ::comparisons::RowCount rowCount(Match match) const;

    /// Returns: true for a changed entry without a changed row among those that the filters leave.
    [[nodiscard]] bool changedWithoutRow(Match match) const;

    /// Returns: whether the entry is visible for its telling properties only.
    [[nodiscard]] bool isKeptToTell(Match match) const { return keptToTell_[match->getIndex()]; }

    /// Returns: the edits of the telling properties of a file on both sides that differ.
    [[nodiscard]] std::vector<dependency::comparisons::NodePropertyEdit> tellingEdits(
        Match match) const;

    /// Returns: a view model whose table shows the rows that the filters leave; null if the entry
    ///          has no detail.
    /// Lifetime: that of the tree.
    [[nodiscard]] std::shared_ptr<ViewModel> shownDetail(Match match) const;

    /// Returns: the same with all rows.
    [[nodiscard]] std::shared_ptr<ViewModel> wholeDetail(Match match) const;

    /// Returns: true if a visible entry differs, or a visible row of a visible entry.
    [[nodiscard]] bool showsDifference() const;

    /// Returns: the same, without properties of files and of the graph.
    [[nodiscard]] bool showsStructuralDifference() const;

    /// Returns: by index of the entry, whether it or an entry below it is visible.
    [[nodiscard]] std::vector<bool> leadsToVisible() const;

    /// Complexity: builds the view model of every entry not yet counted.
    [[nodiscard]] Visibility visibility() const;

  private:
    static constexpr std::size_t maxFilters = std::variant_size_v<Filters>;

    /// What is kept of an entry's view model.
    struct Numbers {
        std::optional<::comparisons::DiffMetrics<2>> metrics;
        // Before the first filter, after it, after the second one.
        std::array<std::uint32_t, maxFilters + 1> rows{};
        std::array<std::uint32_t, maxFilters + 1> differingRows{};
    };

    [[nodiscard]] std::unique_ptr<ViewModel> makeViewModel(Match match) const;
    [[nodiscard]] const Numbers& numbers(Match match) const;
    [[nodiscard]] Numbers countNumbers(Match match) const;
    [[nodiscard]] std::shared_ptr<ViewModel> tellingDetail(Match match) const;
    [[nodiscard]] bool showsDifference(const Entry& entry) const;
    void findEntriesThatTell();
    void hideEntries();

    std::shared_ptr<const dependency::comparisons::GraphComparison> comparison_;
    EnabledFilters filters_;
    OldIDs oldIDs_;
    TellingKeys telling_;
    std::vector<std::u16string> tellingNames_;  // as rows show them, sorted
    ::comparisons::FilteredVMFactoryRegistry<Filters, 2> registry_ =
        dependency::comparisons::getTwoFilteredVMFactoryRegistry();
    std::vector<bool> keptToTell_;        // by entry
    std::vector<std::uint8_t> hiddenBy_;  // by entry: the filter's place, or one after the last
    mutable std::vector<std::optional<Numbers>> numbers_;  // by entry, if requested before
};

}  // namespace depcompare
