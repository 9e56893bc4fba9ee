#include "presentation/report.h"

#include <utility>

namespace depcompare {

std::string_view Report::verdict() const {
    return tree->showsDifference()   ? ""
           : summary.showsDifference ? "No visible differences."
                                     : "No differences.";
}

Report makeReport(Inputs inputs, std::array<std::string, 2> arguments, EnabledFilters filters,
                  const InsightOptions& options, std::optional<std::vector<ListedRename>> renames) {
    Report report{.inputs = std::move(inputs),
                  .arguments = std::move(arguments),
                  .comparison = {},
                  .summary = {},
                  .tree = {},
                  .ledger = {},
                  .insights = {}};
    report.comparison =
        dependency::comparisons::compareGraphs(report.inputs[0].graph, report.inputs[1].graph);
    report.summary = summarize(*report.comparison);
    report.tree = std::make_unique<PresentedTree>(report.comparison, std::move(filters),
                                                  report.inputs[0].oldIDs);
    report.ledger = countLedger(report.inputs, *report.comparison, report.summary, *report.tree);
    checkLedger(report.ledger);
    if (options.detail != InsightDetail::off) {
        report.insights = std::make_shared<const Insights>(
            findInsights(report.inputs, options, std::move(renames)));
        if (options.linkTypes.empty()) {
            checkCauses(report.insights->causes, report.summary.groups);
        }
    }
    return report;
}

}  // namespace depcompare
