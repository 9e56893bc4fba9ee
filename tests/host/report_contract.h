#pragma once
// What holds of every JSON report, whatever was compared.
#include <stdexcept>

#include <nlohmann/json_fwd.hpp>

namespace depcompare::test {

/// Names the rule, and the part of the report that breaks it.
class BrokenRule : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// Checks a report by what it says of itself: its sums, its order, and what its filters leave.
///
/// Throws: `BrokenRule`.
void requireContract(const nlohmann::json& report);

/// Requires: a report without filters and its counterpart with left and right swapped, neither with
///           applied renames.
/// Throws:   `BrokenRule` unless the one is the mirror image of the other, apart from what depends on
///           the direction: the order of entries and rows, and what is told of the right side alone.
void requireMirrorImage(const nlohmann::json& report, const nlohmann::json& swapped);

/// Throws: `BrokenRule` unless a report of a graph and itself tells of no difference.
void requireNoDifference(const nlohmann::json& report);

/// Returns: whether an entry that is visible differs, or a row of one, here or below.
[[nodiscard]] bool showsDifference(const nlohmann::json& entry);

}  // namespace depcompare::test
