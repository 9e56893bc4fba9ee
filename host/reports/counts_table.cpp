#include "reports/counts_table.h"

#include <string_view>
#include <utility>

namespace depcompare {

void writeCounts(const Summary& summary, Output& output) {
    constexpr auto line = "{:<16} {:>9} {:>9} {:>9} {:>9}\n";
    output.print(line, "", "added", "removed", "changed", "unchanged");
    for (const auto& [kind, counts] :
         {std::pair<std::string_view, const EditCounts&>{"Files", summary.files},
          {"Groups", summary.groups},
          {"Dependencies", summary.dependencies},
          {"File properties", summary.fileProperties},
          {"Graph properties", summary.graphProperties}}) {
        output.print(line, kind, counts.added, counts.removed, counts.changed, counts.unchanged);
    }
}

}  // namespace depcompare
