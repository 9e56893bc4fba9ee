#include "presentation/ledger.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <comparisons/side.h>
#include <fmt/format.h>

namespace depcompare {

namespace {

using ::comparisons::indexOf;
using ::comparisons::Side;
using ::comparisons::sides;
using dependency::comparisons::GraphComparison;
using dependency::comparisons::Item;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Dependency;
using dependency::graph::Node;
using dependency::graph::Type;

using PairingKey = std::pair<std::u16string, std::u16string>;

PairingKey pairingKey(const Dependency& dependency) {
    return {dependency.getType()->getID(), dependency.getUpstreamComponent()->getName() +
                                               dependency.getDownstreamComponent()->getName()};
}

/// Returns: how many dependencies of the group come after another one with the same key.
std::size_t foldedOf(const ParallelDependencies& group) {
    if (group.dependencies.size() == 1) {
        return 0;
    }
    std::vector<PairingKey> keys;
    keys.reserve(group.dependencies.size());
    for (const auto& dependency : group.dependencies) {
        keys.push_back(pairingKey(*dependency));
    }
    std::ranges::sort(keys);
    return static_cast<std::size_t>(keys.end() - std::unique(keys.begin(), keys.end()));
}

SideLedger contentOf(const LoadedGraph& input) {
    SideLedger ledger{.nodes = input.nodesRead,
                      .files = input.files,
                      .otherNodes = {},
                      .comparedFiles = 0,
                      .dependencies = input.dependenciesRead,
                      .compared = 0,
                      .folded = 0,
                      .leavingOthers = 0,
                      .leftOut = input.leftOut,
                      .warnings = input.warnings};
    for (const auto& node : input.graph->getNodes()) {
        const auto type = node->getType();
        if (*type == *Type::FILE()) {
            continue;
        }
        ++ledger.otherNodes[type->getID()];
        const auto leaving = input.graph->getDownstreamDependencies(node);
        ledger.leavingOthers +=
            static_cast<std::size_t>(std::distance(leaving.begin(), leaving.end()));
    }
    return ledger;
}

void countItem(const std::optional<Item>& item, SideLedger& ledger) {
    if (!item) {
        return;
    }
    if (const auto* group = std::get_if<ParallelDependencies>(&*item)) {
        ledger.folded += foldedOf(*group);
    } else if (std::holds_alternative<std::shared_ptr<Node>>(*item)) {
        ++ledger.comparedFiles;
    }
}

/// Returns: a remark if the IDs of the files look as if they did not fit together.
std::vector<std::string> warningsOf(const EditCounts& files) {
    const std::size_t common = files.changed + files.unchanged;
    const std::size_t fewer = common + std::min(files.added, files.removed);
    if (fewer < 5 || common * 10 >= fewer) {
        return {};
    }
    return {
        fmt::format("hardly any file is in both graphs ({} of {}); if IDs differ by a folder or "
                    "a version, see --strip-prefix, --strip-version and --id-replace",
                    common, fewer)};
}

void requireSum(std::string_view what, std::size_t parts, std::size_t whole) {
    if (parts != whole) {
        throw LedgerError(fmt::format(
            "internal error: the ledger does not add up: {} {} instead of {}", parts, what, whole));
    }
}

}  // namespace

Ledger countLedger(const std::array<LoadedGraph, 2>& inputs, const GraphComparison& comparison,
                   const Summary& summary, const PresentedTree& tree) {
    Ledger ledger;
    ledger.visibility = tree.visibility();
    ledger.warnings = warningsOf(summary.files);
    const EditCounts& rows = summary.dependencies;
    const std::array<std::size_t, 2> oneSided{rows.removed, rows.added};
    for (const Side side : sides) {
        SideLedger& counts = ledger.sides[indexOf(side)];
        counts = contentOf(inputs[indexOf(side)]);
        counts.compared = oneSided[indexOf(side)] + rows.changed + rows.unchanged;
    }
    for (const auto vertex : comparison.entries()) {
        for (const Side side : sides) {
            countItem(comparison[vertex].edit[side], ledger.sides[indexOf(side)]);
        }
        ++ledger.entries;
    }
    ledger.rows = rows.all() + summary.fileProperties.all() + summary.graphProperties.all();
    return ledger;
}

void checkLedger(const Ledger& ledger) {
    constexpr std::array<std::string_view, 2> names{"left", "right"};
    for (const Side side : sides) {
        const SideLedger& counts = ledger.sides[indexOf(side)];
        const std::string_view name = names[indexOf(side)];
        std::size_t nodes = counts.files + counts.leftOut.nodes;
        for (const auto& [type, count] : counts.otherNodes) {
            nodes += count;
        }
        requireSum(fmt::format("{} nodes", name), nodes, counts.nodes);
        requireSum(fmt::format("{} files", name), counts.comparedFiles, counts.files);
        requireSum(
            fmt::format("{} dependencies", name),
            counts.compared + counts.folded + counts.leavingOthers + counts.leftOut.dependencies,
            counts.dependencies);
    }
    const Visibility& visibility = ledger.visibility;
    std::size_t entries = visibility.entries.visible;
    std::size_t rows = visibility.rows.visible;
    for (const HiddenByFilter& hidden : visibility.hidden) {
        entries += hidden.entries.all();
        rows += hidden.rows;
    }
    requireSum("entries", entries, ledger.entries);
    requireSum("rows", rows, ledger.rows);
}

void checkCauses(const dependency::insight::Causes& causes, const EditCounts& groups) {
    requireSum("causes of added groups", causes.added.all(), groups.added);
    requireSum("causes of removed groups", causes.removed.all(), groups.removed);
    requireSum("causes of changed groups", causes.changed.all(), groups.changed);
}

}  // namespace depcompare
