#pragma once
// What the JSON report and the page's data share: names, IDs, and the account of a comparison.
#include <string_view>

#include <comparisons/side.h>
#include <dependency/graph/node.h>

#include "output/json_writer.h"
#include "presentation/report.h"

namespace depcompare {

/// Returns: the name of the member that holds what belongs to `side`.
[[nodiscard]] std::string_view memberOf(::comparisons::Side side);

/// Returns: the node's ID as the file wrote it; valid as long as the node.
[[nodiscard]] std::u16string_view idOf(const dependency::graph::Node& node);

/// Writes the members `left`, `right`, `summary` and `ledger` of the open object, and `telling` and
/// `versions` if telling properties are shown.
void writeAccount(const Report& report, JsonWriter& json);

}  // namespace depcompare
