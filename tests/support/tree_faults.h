#pragma once
// What must hold of every comparison, whatever was compared.
#include <memory>
#include <string>
#include <vector>

#include <dependency/comparisons/compare_graphs.h>

namespace dependency::test {

/// Checks that the entries are the matched edits, one each; that every item that a side's traversal
/// model reaches has one entry, linked below the entry of its parent and numbered as the model
/// lists it; that nothing else is linked or numbered; that the details are there, ready, and of the
/// kind that the entry asks for; and that the merged children show every entry once, with the
/// fewest moves.
///
/// Returns: what does not hold, in words; empty for a sound comparison of these graphs.
[[nodiscard]] std::vector<std::string> faultsOf(const comparisons::GraphComparison& comparison,
                                                const std::shared_ptr<const graph::Graph>& left,
                                                const std::shared_ptr<const graph::Graph>& right);

}  // namespace dependency::test
