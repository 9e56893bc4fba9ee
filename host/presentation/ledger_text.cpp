#include "presentation/ledger_text.h"

#include <iterator>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

std::string whatIsHidden(const HiddenByFilter& hidden) {
    std::vector<std::string> parts;
    const EntryCounts& entries = hidden.differingEntries;
    if (entries.graphs != 0) {
        parts.emplace_back("the graph");
    }
    if (entries.files != 0) {
        parts.push_back(counted(entries.files, "file", "files"));
    }
    if (entries.groups != 0) {
        parts.push_back(counted(entries.groups, "link", "links"));
    }
    if (hidden.differingRows != 0) {
        parts.push_back(counted(hidden.differingRows, "row", "rows"));
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

}  // namespace

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

std::string contentsOf(const LoadedGraph& input) {
    return counted(input.files, "file", "files") + ", " +
           counted(input.dependencies, "dependency", "dependencies");
}

std::vector<std::string> hiddenLines(const Visibility& visibility) {
    std::vector<std::string> lines;
    for (const HiddenByFilter& hidden : visibility.hidden) {
        if (const std::string what = whatIsHidden(hidden); !what.empty()) {
            lines.push_back(
                fmt::format("Hidden by the {} filter: {}", titleOf(hidden.filter), what));
        }
    }
    return lines;
}

std::string nodesLine(const SideLedger& side) {
    std::vector<std::string> parts{counted(side.files, "file", "files")};
    for (const auto& [type, count] : side.otherNodes) {
        parts.push_back(fmt::format("{} {}", count, visible(fl::i18n::ustring_to_utf8(type))));
    }
    if (side.leftOut.nodes != 0) {
        parts.push_back(fmt::format("{} left out", side.leftOut.nodes));
    }
    return fmt::format("{}: {}", counted(side.nodes, "node", "nodes"), fmt::join(parts, ", "));
}

std::string dependenciesLine(const SideLedger& side) {
    std::vector<std::string> parts{fmt::format("{} compared", side.compared)};
    if (side.folded != 0) {
        parts.push_back(counted(side.folded, "duplicate", "duplicates"));
    }
    if (side.leavingOthers != 0) {
        parts.push_back(fmt::format("{} leaving non-file nodes", side.leavingOthers));
    }
    if (side.leftOut.dependencies != 0) {
        parts.push_back(fmt::format("{} left out", side.leftOut.dependencies));
    }
    return fmt::format("{}: {}", counted(side.dependencies, "dependency", "dependencies"),
                       fmt::join(parts, ", "));
}

std::string leftOutLine(const SideLedger& side, LeftOutParts which) {
    const auto& [nodes, dependencies, properties, buildProperties, components] = side.leftOut;
    std::vector<std::string> parts;
    if (nodes != 0 && which == LeftOutParts::all) {
        parts.push_back(counted(nodes, "node", "nodes"));
    }
    if (dependencies != 0 && which == LeftOutParts::all) {
        parts.push_back(counted(dependencies, "dependency", "dependencies"));
    }
    if (properties != 0) {
        parts.push_back(counted(properties, "property", "properties"));
    }
    if (components != 0) {
        parts.push_back(counted(components, "component", "components"));
    }
    if (buildProperties != 0) {
        parts.push_back(
            counted(buildProperties, "property of the build", "properties of the build"));
    }
    return parts.empty() ? "" : fmt::format("Left out: {}", fmt::join(parts, ", "));
}

std::string countsTable(const Summary& summary) {
    constexpr auto line = "{:<16} {:>9} {:>9} {:>9} {:>9}\n";
    std::string table = fmt::format(line, "", "added", "removed", "changed", "unchanged");
    for (const auto& [name, title, counts] : summary.byKind()) {
        fmt::format_to(std::back_inserter(table), line, title, counts.added, counts.removed,
                       counts.changed, counts.unchanged);
    }
    return table;
}

}  // namespace depcompare
