#pragma once
// The interfaces of view models: what a viewer shows of one detail comparison.
#include <cstddef>
#include <string>

#include <boost/range/any_range.hpp>

#include <comparisons/diff_metrics.h>
#include <comparisons/export.h>

namespace comparisons {

/// Anything that a viewer shows; its type string says what.
class COMPARISONS_EXPORT ViewModel {
  public:
    [[nodiscard]] virtual std::string type() const = 0;
    virtual ~ViewModel();

    ViewModel(const ViewModel&) = delete;
    ViewModel& operator=(const ViewModel&) = delete;

  protected:
    ViewModel() = default;
};

/// A view model that counts differences.
template <std::size_t Sides>
class DiffViewModel : public virtual ViewModel {
  public:
    /// Returns: the counts of what is visible.
    [[nodiscard]] virtual DiffMetrics<Sides> metrics() const = 0;
};

/// The number of rows, without those of nested view models.
struct RowCount {
    std::size_t all = 0;
    std::size_t visible = 0;

    RowCount& operator+=(const RowCount& other) noexcept {
        all += other.all;
        visible += other.visible;
        return *this;
    }
    friend bool operator==(const RowCount&, const RowCount&) = default;
};

/// A view model whose rows filters hide.
///
/// Filters and resets take effect on metrics at once and on what is shown with the next commit.
template <class Filters, std::size_t Sides>
class FilteredViewModel : public DiffViewModel<Sides> {
  public:
    using FilterRange = boost::any_range<const Filters, boost::forward_traversal_tag>;

    /// Shows every row again, nested ones included.
    virtual void resetVisibility() = 0;

    /// Hides rows; a row that is hidden already stays so.
    /// Throws: `std::bad_variant_access` for a valueless filter, if it has a table of its own.
    virtual void applyFilter(const Filters& filter) = 0;

    /// Applies `filters` one after the other; a null pointer does nothing.
    virtual void applyFilters(const FilterRange* filters) {
        if (filters != nullptr) {
            for (const Filters& filter : *filters) {
                applyFilter(filter);
            }
        }
    }

    /// Rebuilds what is shown from the visible rows.
    virtual void commit() = 0;

    [[nodiscard]] virtual RowCount rowCount() const = 0;
};

}  // namespace comparisons
