#pragma once
// Checks a JSON report by what it says of itself: the sums of its rows, and what may be visible.
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace depcompare::test {

/// Returns: one line for each fault, with the place of it; none for a report that keeps its
///          contract.
[[nodiscard]] std::vector<std::string> faultsOf(const nlohmann::json& report);

/// Returns: whether an entry that is visible differs, or a row of one.
[[nodiscard]] bool showsDifference(const nlohmann::json& entry);

}  // namespace depcompare::test
