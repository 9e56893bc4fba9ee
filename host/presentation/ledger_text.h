#pragma once
// How the report for people ends: what is hidden, the account of everything, the summary.
#include <cstddef>
#include <string>
#include <string_view>

#include "output/output.h"
#include "presentation/report.h"
#include "presentation/text_style.h"

namespace depcompare {

/// Writes lines that are broken at the style's width.
void writeEnding(const Report& report, const TextStyle& style, Output& output);

/// Returns: the number with the word that goes with it.
[[nodiscard]] std::string counted(std::size_t count, std::string_view one,
                                  std::string_view several);

}  // namespace depcompare
