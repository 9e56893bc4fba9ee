#pragma once
// The report for people: the tree of what differs, one line for each entry.
#include <cstddef>
#include <optional>

#include "output.h"
#include "reports/report.h"

namespace depcompare {

struct TextStyle {
    bool colours = false;
    std::optional<std::size_t> columns;  ///< of the terminal; none: no line is shortened
};

/// Signs are + added, - removed, ~ changed and = unchanged. Unchanged entries are left out unless
/// something below them differs.
void writeTextReport(const Report& report, const TextStyle& style, Output& output);

}  // namespace depcompare
