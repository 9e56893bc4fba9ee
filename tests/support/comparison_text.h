#pragma once
// Comparisons rendered as text, one line per entry or row.
//
// Marks: = equal, ~ changed, < left only, > right only.
#include <string>
#include <string_view>

#include <comparisons/comparison_value.h>
#include <dependency/comparisons/compare_graphs.h>

namespace dependency::test {

/// "graph", a node's ID, or "A -> B"; an empty ID is `""`. If the sides differ: "left | right".
[[nodiscard]] std::string labelOf(const comparisons::Item& item);
[[nodiscard]] std::string labelOf(const comparisons::ItemEdit& edit);

/// "~ A | B": the mark and the label of an edit. One that cannot be shows as "!".
[[nodiscard]] std::string textOf(const comparisons::ItemEdit& edit);

/// The children merged for display, indented below their parent. An entry that the sides order
/// differently ends in " (moved)", one that has another parent on the left in " (moved here)".
[[nodiscard]] std::string treeOf(const comparisons::GraphComparison& comparison);

/// `treeOf` the comparison of two graphs.
[[nodiscard]] std::string compared(std::string_view left, std::string_view right);

/// One line per edit: a property as "~ name: left | right", a dependency as "~ 1 x -> y | 2 x -> z"
/// (its ID and its components) below a line with the IDs and names of its types.
[[nodiscard]] std::string rowsOf(const ::comparisons::ComparisonValue& detail);

/// The rows of the entry with this label in the comparison of two graphs.
[[nodiscard]] std::string rowsOf(std::string_view left, std::string_view right,
                                 std::string_view label);

}  // namespace dependency::test
