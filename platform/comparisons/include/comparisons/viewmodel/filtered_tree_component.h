#pragma once
// A comparison tree as a list of entries, in display order, that filters hide.
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <unordered_map>
#include <vector>

#include <comparisons/diff_metrics.h>
#include <comparisons/edit_type.h>
#include <comparisons/tree_comparison.h>
#include <comparisons/view_model.h>
#include <comparisons/viewmodel/match.h>

namespace comparisons::viewmodel::tree {

/// The entries of one comparison tree with their visibility. `TreeFilter` is a stateless callable
/// that lowers the flags of the entries by one filter.
///
/// Hiding an entry hides neither its parent nor its children.
template <class Edit, class Filters, class TreeFilter>
class FilteredTreeComponent {
  public:
    static constexpr std::size_t noParent = std::numeric_limits<std::size_t>::max();

    struct Entry {
        Match match;
        std::size_t parent = noParent;  ///< its index in the list, less than this entry's
        std::uint8_t visible = 1;       ///< non-zero: shown
    };

    FilteredTreeComponent() = default;

    /// Lists `comparison`: every entry once, the root first, children after their parent in
    /// display order, each followed by its own. An entry with two parents is listed under that of
    /// the right side.
    ///
    /// Lifetime: `comparison` must outlive the component.
    explicit FilteredTreeComponent(const TreeComparison<Edit>& comparison) {
        list(comparison, {.vertex = comparison.root()}, noParent);
    }

    virtual ~FilteredTreeComponent() = default;
    FilteredTreeComponent(const FilteredTreeComponent&) = delete;
    FilteredTreeComponent& operator=(const FilteredTreeComponent&) = delete;

    /// Appends an entry, visible. `edit` may be null. If it throws, nothing is appended.
    Match add(const Edit* edit, EditType type, bool hierarchyMove, bool orderMove,
              std::size_t parent) {
        const std::size_t index = entries_.size();
        edits_.resize(index);  // less the one of a call that threw
        edits_.push_back(edit);
        const Match match(matches_.emplace_back(index, type, hierarchyMove, orderMove));
        entries_.push_back({.match = match, .parent = parent});
        return match;
    }

    [[nodiscard]] std::vector<Entry>& entries() noexcept { return entries_; }
    [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return entries_; }

    /// Returns: null if the entry has none.
    [[nodiscard]] const Edit* edit(Match match) const { return edits_.at(match->getIndex()); }

    /// Returns: the metrics of the entry's detail comparison, empty if they are not known.
    [[nodiscard]] virtual std::optional<DiffMetrics<2>> metrics(Match match) const {
        const auto found = metrics_.find(match);
        return found == metrics_.end() ? std::nullopt : std::optional(found->second);
    }
    void setMetrics(Match match, const DiffMetrics<2>& metrics) {
        metrics_.insert_or_assign(match, metrics);
    }

    void resetVisibility() noexcept {
        for (Entry& entry : entries_) {
            entry.visible = 1;
        }
    }

    /// Hides entries; one that is hidden already stays so.
    /// Throws: `std::bad_variant_access` for a valueless filter.
    void applyFilter(const Filters& filter) { TreeFilter()(*this, filter); }

    [[nodiscard]] RowCount entryCount() const noexcept {
        RowCount count{.all = entries_.size()};
        for (const Entry& entry : entries_) {
            count.visible += entry.visible != 0 ? 1U : 0U;
        }
        return count;
    }

  protected:
    /// Returns: the vertex of an entry that was listed from a comparison.
    using Vertex = typename TreeComparison<Edit>::Vertex;
    [[nodiscard]] Vertex vertex(Match match) const { return vertices_.at(match->getIndex()); }

  private:
    using Child = typename TreeComparison<Edit>::Child;

    void list(const TreeComparison<Edit>& comparison, const Child& child, std::size_t parent) {
        const Edit& edit = comparison[child.vertex].edit;
        const std::size_t index = entries_.size();
        add(&edit, editType(edit), child.hierarchyMove, child.orderMove, parent);
        vertices_.push_back(child.vertex);
        for (const Child& next : comparison.children(child.vertex)) {
            list(comparison, next, index);
        }
    }

    std::deque<Match::Impl> matches_;
    std::vector<const Edit*> edits_;
    std::vector<Vertex> vertices_;
    std::vector<Entry> entries_;
    std::unordered_map<Match, DiffMetrics<2>> metrics_;
};

}  // namespace comparisons::viewmodel::tree
