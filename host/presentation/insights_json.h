#pragma once
// Insights as JSON, for the JSON report and the page's data.
#include "output/json_writer.h"
#include "presentation/insights.h"

namespace depcompare {

/// Writes one object.
void writeInsights(const Insights& insights, JsonWriter& json);

}  // namespace depcompare
