#include "presentation/counts_table.h"

namespace depcompare {

std::array<std::pair<std::string_view, EditCounts>, 5> countsByKind(const Summary& summary) {
    return {{{"Files", summary.files},
             {"Groups", summary.groups},
             {"Dependencies", summary.dependencies},
             {"File properties", summary.fileProperties},
             {"Graph properties", summary.graphProperties}}};
}

void writeCounts(const Summary& summary, Output& output) {
    constexpr auto line = "{:<16} {:>9} {:>9} {:>9} {:>9}\n";
    output.print(line, "", "added", "removed", "changed", "unchanged");
    for (const auto& [kind, counts] : countsByKind(summary)) {
        output.print(line, kind, counts.added, counts.removed, counts.changed, counts.unchanged);
    }
}

}  // namespace depcompare
