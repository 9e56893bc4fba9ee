#pragma once
// Compares the two sides of one tree entry in detail.
#include <future>

#include <comparisons/comparison_value.h>

namespace comparisons {

/// A detail comparison of edits of one kind.
template <class Edit>
class Subcomparator {
  public:
    [[nodiscard]] virtual bool canCompare(const Edit& edit) const = 0;

    /// Requires: `canCompare(edit)`.
    [[nodiscard]] virtual std::future<ComparisonValue> compare(const Edit& edit) = 0;

    virtual ~Subcomparator() = default;

  protected:
    Subcomparator() = default;
    Subcomparator(const Subcomparator&) = default;
    Subcomparator& operator=(const Subcomparator&) = default;
};

/// Returns: a future that is already satisfied with `comparison`.
template <class Comparison>
[[nodiscard]] std::future<ComparisonValue> readyFuture(Comparison comparison) {
    std::promise<ComparisonValue> promise;
    promise.set_value(ComparisonValue(std::move(comparison)));
    return promise.get_future();
}

}  // namespace comparisons
