#include "shape.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <fmt/ostream.h>

#include "generated_text.h"

namespace depcompare::bench {

namespace {

Distribution distributionOf(std::vector<std::size_t> values) {
    std::ranges::sort(values);
    return {.median = values[values.size() / 2],
            .p99 = values[values.size() * 99 / 100],
            .max = values.back()};
}

void printRow(std::ostream& out, std::string_view name, const Distribution& values) {
    fmt::print(out, "    {:<24}{:>8}{:>8}{:>8}\n", name, values.median, values.p99, values.max);
}

void printCounts(std::ostream& out, std::string_view name, const PairCounts& counts) {
    fmt::print(out, "  {:<8}{:>10}{:>10}{:>10}{:>10}\n", name, counts.removed, counts.added,
               counts.common, counts.changed);
}

}  // namespace

SideShape shapeOf(const GeneratedPair& pair, std::size_t side) {
    const GeneratedSide& made = pair.sides[side];
    std::vector<std::size_t> out(pair.changedProperty.size());
    std::vector<std::size_t> in(out.size());
    std::vector<std::size_t> idLengths;
    std::vector<std::size_t> names;
    for (const Link& link : made.links) {
        ++out[link.upstream];
        ++in[link.downstream];
        names.push_back(componentName(link.upstream, link.upstreamComponent).size());
        names.push_back(componentName(link.downstream, link.downstreamComponent).size());
    }
    std::vector<std::size_t> outDegrees;
    std::vector<std::size_t> inDegrees;
    for (const std::uint32_t file : made.files) {
        outDegrees.push_back(out[file]);
        inDegrees.push_back(in[file]);
        idLengths.push_back(fileID(file).size());
    }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> groups;
    for (const Link& link : made.links) {
        groups.emplace_back(link.upstream, link.downstream);
    }
    std::ranges::sort(groups);
    groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
    return {.files = made.files.size(),
            .dependencies = made.links.size(),
            .groups = groups.size(),
            .outDegree = distributionOf(std::move(outDegrees)),
            .inDegree = distributionOf(std::move(inDegrees)),
            .idLength = distributionOf(std::move(idLengths)),
            .componentName = distributionOf(std::move(names))};
}

void printShape(std::ostream& out, const GeneratedPair& pair) {
    constexpr std::array<std::string_view, 2> sideNames{"left", "right"};
    for (std::size_t side = 0; side < sideNames.size(); ++side) {
        const SideShape shape = shapeOf(pair, side);
        fmt::print(out, "  {}: {} files, {} dependencies, {} groups ({:.2f} dependencies each)\n",
                   sideNames[side], shape.files, shape.dependencies, shape.groups,
                   static_cast<double>(shape.dependencies) / static_cast<double>(shape.groups));
        fmt::print(out, "    {:<24}{:>8}{:>8}{:>8}\n", "", "median", "p99", "max");
        printRow(out, "dependencies per file", shape.outDegree);
        printRow(out, "dependents per file", shape.inDegree);
        printRow(out, "characters per ID", shape.idLength);
        printRow(out, "per component name", shape.componentName);
    }
    fmt::print(out, "  {:<8}{:>10}{:>10}{:>10}{:>10}\n", "", "removed", "added", "common",
               "changed");
    printCounts(out, "files", pair.expected.files);
    printCounts(out, "groups", pair.expected.groups);
    fmt::print(out, "  entries {}, {:.2f} per file\n", pair.expected.entries(),
               static_cast<double>(pair.expected.entries()) /
                   static_cast<double>(pair.sides[0].files.size()));
}

}  // namespace depcompare::bench
