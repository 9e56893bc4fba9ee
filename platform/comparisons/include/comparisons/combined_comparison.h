#pragma once
// Several comparisons of one entry, shown one after the other.
#include <string>
#include <utility>
#include <vector>

#include <comparisons/comparison_value.h>
#include <comparisons/export.h>

namespace comparisons {

/// A list of comparisons in the order in which they are shown.
class CombinedComparison {
  public:
    explicit CombinedComparison(std::vector<ComparisonValue> members)
        : members_(std::move(members)) {}

    [[nodiscard]] const std::vector<ComparisonValue>& members() const noexcept { return members_; }

  private:
    std::vector<ComparisonValue> members_;
};

/// Returns: "combined_comparison".
[[nodiscard]] COMPARISONS_EXPORT const std::string& get_type(const CombinedComparison& comparison);

}  // namespace comparisons
