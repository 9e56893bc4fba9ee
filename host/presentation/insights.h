#pragma once
// What the differences between two graphs mean, for every report to render.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <dependency/insight/areas.h>
#include <dependency/insight/causes.h>
#include <dependency/insight/cycles.h>
#include <dependency/insight/link_graph.h>
#include <dependency/insight/reach.h>
#include <dependency/insight/renames.h>

#include "draft/build_graphs.h"

namespace depcompare {

namespace insight = dependency::insight;

/// Full: nothing is shortened for people, and reach is counted whatever it costs.
enum class InsightDetail : std::uint8_t { off, shortened, full };
/// Whether probable renames are looked for, and whether the comparison takes them as given.
enum class RenameMode : std::uint8_t { off, report, apply };

struct InsightOptions {
    InsightDetail detail = InsightDetail::shortened;
    /// Their separator is that of the components of IDs everywhere.
    insight::AreaOptions areas = {};
    /// Which types of dependencies count: patterns of the shell, or with `!` before them of those
    /// that do not count. All count if there are none.
    std::vector<std::string> linkTypes = {};
    RenameMode renames = RenameMode::report;
    std::vector<NodeIDs> statedRenames = {};
    std::vector<NodeIDs> forbiddenRenames = {};
};

struct ListedRename {
    NodeIDs ids;
    /// Its nodes are those of `Insights::graph`; both are the same if the rename was applied.
    insight::Rename found;
    bool applied = false;  ///< the compared left node has the right one's ID
};

struct Insights {
    insight::LinkGraph graph;  ///< of the links that count; displays IDs as the files have them
    insight::Cycles cycles;
    /// Those of hard links alone; absent unless the format of a side has soft types.
    std::optional<insight::Cycles> hardCycles;
    std::optional<insight::Reach> reach;  ///< absent if it would cost too much
    insight::Areas areas;
    std::optional<std::u16string> areaProperty;  ///< the node property that makes the areas
    insight::OtherNodes others;
    std::vector<ListedRename> renames;  ///< by left ID; stated and guessed ones
    insight::Causes causes;             ///< by all probable renames that were not applied
    bool full = false;                  ///< reports do not shorten them
};

/// Two graphs as they were loaded: left, right.
using LoadedPair = std::array<LoadedGraph, 2>;

/// Returns: the links that count; the graph displays IDs as the files have them.
[[nodiscard]] insight::LinkGraph linkGraph(const LoadedPair& inputs, const InsightOptions& options);

/// Returns: those of `options.linkTypes` that match no type of a dependency.
/// Complexity: linear in dependencies, unless there are none to match.
[[nodiscard]] std::vector<std::string> unmatchedLinkTypes(const LoadedPair& inputs,
                                                          const InsightOptions& options);

/// Finds the renames between two graphs as their files have them.
///
/// Returns: by left ID, with nothing applied; empty if the mode is `off`.
/// Throws:  `InputError` for a stated or forbidden pair with an ID that its side lacks, and for a
///          stated one with a node of both sides or of another stated pair.
[[nodiscard]] std::vector<ListedRename> listRenames(const LoadedPair& inputs,
                                                    const InsightOptions& options);

/// Marks those that are probable and not ambiguous as applied.
///
/// Returns: them.
[[nodiscard]] std::vector<NodeIDs> applyRenames(std::vector<ListedRename>& renames);

/// Finds what the differences between two graphs mean.
///
/// `renames` is what `listRenames` returned before the left graph was built with those that are
/// marked as applied; without it they are looked for here.
///
/// Requires: a detail other than `off`.
/// Throws:   as `listRenames`, and `InputError` if areas are made by a property that no node has.
[[nodiscard]] Insights findInsights(
    const LoadedPair& inputs, const InsightOptions& options,
    std::optional<std::vector<ListedRename>> renames = std::nullopt);

/// Returns: whether a cycle was added, or changed by a link that was added; of hard links alone if a
///          side has soft ones.
[[nodiscard]] bool haveNewCycles(const Insights& insights);

}  // namespace depcompare
