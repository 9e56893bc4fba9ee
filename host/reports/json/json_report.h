#pragma once
// The report for programs.
#include <cstdint>

#include "output/output.h"
#include "presentation/report.h"

namespace depcompare {

/// Of the report's format; grows if a program that reads reports would have to change.
inline constexpr std::uint64_t jsonReportVersion = 1;

/// Writes one JSON object of this version, with one line for each entry.
void writeJsonReport(const Report& report, Output& output);

}  // namespace depcompare
