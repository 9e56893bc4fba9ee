#include "presentation/report.h"

#include <utility>

namespace depcompare {

Report compareInputs(Inputs inputs, std::array<std::string, 2> arguments, EnabledFilters filters) {
    Report report{.inputs = std::move(inputs),
                  .arguments = std::move(arguments),
                  .comparison = {},
                  .summary = {},
                  .ledger = {},
                  .tree = {}};
    report.comparison =
        dependency::comparisons::compareGraphs(report.inputs[0].graph, report.inputs[1].graph);
    report.summary = summarize(*report.comparison);
    report.ledger = countLedger(report.inputs, *report.comparison, report.summary);
    checkSides(report.ledger);
    report.tree = std::make_unique<PresentedTree>(report.comparison, std::move(filters));
    return report;
}

void completeLedger(Report& report) {
    report.ledger.visibility = report.tree->visibility();
    checkVisibility(report.ledger);
}

}  // namespace depcompare
