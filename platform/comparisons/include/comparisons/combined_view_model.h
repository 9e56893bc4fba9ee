#pragma once
// View models that hold others, or nothing.
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <comparisons/export.h>
#include <comparisons/view_model.h>

namespace comparisons {

namespace detail {
[[nodiscard]] COMPARISONS_EXPORT const std::string& combinedViewModelType();
[[nodiscard]] COMPARISONS_EXPORT const std::string& emptyViewModelType();
}  // namespace detail

/// Several view models, shown one after the other, as one. Of type "combined".
template <class Filters, std::size_t Sides>
class FilteredCombinedViewModel final : public FilteredViewModel<Filters, Sides> {
  public:
    using Members = std::vector<std::unique_ptr<FilteredViewModel<Filters, Sides>>>;

    /// Requires: no null pointer among `members`.
    explicit FilteredCombinedViewModel(Members members) : members_(std::move(members)) {}

    /// Order: that of the comparison's members.
    [[nodiscard]] const Members& members() const noexcept { return members_; }

    [[nodiscard]] std::string type() const override { return detail::combinedViewModelType(); }

    [[nodiscard]] DiffMetrics<Sides> metrics() const override {
        DiffMetrics<Sides> sum;
        for (const auto& member : members_) {
            sum += member->metrics();
        }
        return sum;
    }
    void resetVisibility() override {
        for (const auto& member : members_) {
            member->resetVisibility();
        }
    }
    void applyFilter(const Filters& filter) override {
        for (const auto& member : members_) {
            member->applyFilter(filter);
        }
    }
    void commit() override {
        for (const auto& member : members_) {
            member->commit();
        }
    }
    [[nodiscard]] RowCount rowCount() const override {
        RowCount sum;
        for (const auto& member : members_) {
            sum += member->rowCount();
        }
        return sum;
    }

  private:
    Members members_;
};

/// Shows nothing. Of type "empty".
template <class Filters, std::size_t Sides>
class EmptyFilteredViewModel final : public FilteredViewModel<Filters, Sides> {
  public:
    [[nodiscard]] std::string type() const override { return detail::emptyViewModelType(); }
    [[nodiscard]] DiffMetrics<Sides> metrics() const override { return {}; }
    void resetVisibility() override {}
    void applyFilter(const Filters& /*filter*/) override {}
    void commit() override {}
    [[nodiscard]] RowCount rowCount() const override { return {}; }
};

}  // namespace comparisons
