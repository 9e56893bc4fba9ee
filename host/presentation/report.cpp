#include "presentation/report.h"

#include <algorithm>
#include <utility>

#include <fl/i18n/ustring.h>

namespace depcompare {

std::string_view Report::verdict() const {
    return tree->showsDifference()   ? ""
           : summary.showsDifference ? "No visible differences."
                                     : "No differences.";
}

TellingKeys tellingKeysOf(const Inputs& inputs) {
    TellingKeys keys;
    for (const LoadedGraph& input : inputs) {
        for (const std::string& key : input.tellingKeys) {
            keys.push_back(fl::i18n::utf8_to_ustring(key));
        }
    }
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

Report makeReport(Inputs inputs, std::array<std::string, 2> arguments, EnabledFilters filters,
                  const InsightOptions& options, std::optional<std::vector<ListedRename>> renames,
                  TellingKeys telling) {
    Report report{.inputs = std::move(inputs),
                  .arguments = std::move(arguments),
                  .comparison = {},
                  .summary = {},
                  .tree = {},
                  .ledger = {},
                  .insights = {},
                  .versions = {}};
    report.comparison =
        dependency::comparisons::compareGraphs(report.inputs[0].graph, report.inputs[1].graph);
    report.summary = summarize(*report.comparison);
    report.tree = std::make_unique<PresentedTree>(report.comparison, std::move(filters),
                                                  report.inputs[0].oldIDs, std::move(telling));
    report.ledger = countLedger(report.inputs, *report.comparison, report.summary, *report.tree);
    checkLedger(report.ledger);
    if (options.detail != InsightDetail::off) {
        report.insights = std::make_shared<const Insights>(
            findInsights(report.inputs, options, std::move(renames)));
        if (options.linkTypes.empty()) {
            checkCauses(report.insights->causes, report.summary.groups);
        }
    }
    if (!report.tree->telling().empty()) {
        report.versions = countVersions(*report.tree);
    }
    return report;
}

}  // namespace depcompare
