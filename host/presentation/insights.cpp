#include "presentation/insights.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <set>
#include <string_view>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "draft/glob.h"
#include "draft/marked_id.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using dependency::graph::Node;
using fl::i18n::ustring_to_utf8;
using insight::Edit;
using insight::LinkGraph;
using insight::NodePair;
using insight::Number;
using insight::Side;

std::u16string_view displayedID(const Node& node) {
    return idAsRead(node.getID());
}

bool isSelected(const std::vector<std::string>& linkTypes, const std::string& type) {
    bool onlyNamed = false;
    bool named = false;
    for (const std::string& glob : linkTypes) {
        if (glob.starts_with('!')) {
            if (matchesGlob(glob.substr(1), type)) {
                return false;
            }
        } else {
            onlyNamed = true;
            named = named || matchesGlob(glob, type);
        }
    }
    return named || !onlyNamed;
}

bool haveSoftTypes(const LoadedPair& inputs) {
    return std::ranges::any_of(inputs,
                               [](const LoadedGraph& input) { return !input.softTypes.empty(); });
}

/// Returns: the IDs of all types of dependencies.
std::set<std::string> dependencyTypes(const LoadedPair& inputs) {
    std::set<std::string> types;
    std::shared_ptr<const dependency::graph::Type> last;
    for (const LoadedGraph& input : inputs) {
        for (const auto& node : input.graph->getNodes()) {
            for (const auto& dependency : input.graph->getDownstreamDependencies(node)) {
                if (auto type = dependency->getType(); type != last) {
                    types.insert(ustring_to_utf8(type->getID()));
                    last = std::move(type);
                }
            }
        }
    }
    return types;
}

/// Turns IDs of stated and forbidden pairs into numbers.
class PairFinder {
  public:
    PairFinder(const LinkGraph& graph, const LoadedPair& inputs) : graph_(graph), inputs_(inputs) {}

    [[nodiscard]] NodePair find(const NodeIDs& ids) const {
        return {.left = find(ids.left, Side::left), .right = find(ids.right, Side::right)};
    }

    [[nodiscard]] NodePair findStated(const NodeIDs& ids) {
        const NodePair pair = find(ids);
        if (graph_.edit(pair.left) == Edit::common) {
            fail(Side::right, ids.left, "was not removed");
        }
        if (graph_.edit(pair.right) == Edit::common) {
            fail(Side::left, ids.right, "was not added");
        }
        if (!stated_.insert(pair.left).second) {
            fail(Side::left, ids.left, "has two new IDs");
        }
        if (!stated_.insert(pair.right).second) {
            fail(Side::right, ids.right, "has two old IDs");
        }
        return pair;
    }

  private:
    [[nodiscard]] Number find(std::u16string_view id, Side side) const {
        const auto number = graph_.find(id);
        if (!number || !graph_.has(*number, side)) {
            fail(side, id, "does not exist");
        }
        return *number;
    }

    [[noreturn]] void fail(Side side, std::u16string_view id, std::string_view problem) const {
        throw InputError(
            inputs_[side == Side::left ? 0 : 1].source, 0,
            fmt::format("node {} of a stated rename {}", inQuotes(ustring_to_utf8(id)), problem));
    }

    const LinkGraph& graph_;
    const LoadedPair& inputs_;
    std::set<Number> stated_;
};

std::vector<ListedRename> listRenames(const LinkGraph& graph, const LoadedPair& inputs,
                                      const InsightOptions& options) {
    std::vector<ListedRename> listed;
    if (options.renames == RenameMode::off) {
        return listed;
    }
    insight::RenameOptions renameOptions{.separator = options.areas.separator};
    PairFinder finder(graph, inputs);
    for (const NodeIDs& ids : options.statedRenames) {
        renameOptions.stated.push_back(finder.findStated(ids));
    }
    for (const NodeIDs& ids : options.forbiddenRenames) {
        renameOptions.forbidden.push_back(finder.find(ids));
    }
    for (insight::Rename& found : insight::findRenames(graph, renameOptions)) {
        NodeIDs ids{.left = std::u16string(graph.id(found.nodes.left)),
                    .right = std::u16string(graph.id(found.nodes.right))};
        listed.push_back({.ids = std::move(ids), .found = std::move(found), .applied = false});
    }
    return listed;
}

/// Numbers their nodes as `graph` does, from which the old IDs of applied ones have gone.
void renumber(std::vector<ListedRename>& renames, const LinkGraph& graph) {
    for (ListedRename& rename : renames) {
        const Number right = *graph.find(rename.ids.right);
        rename.found.nodes = {.left = rename.applied ? right : *graph.find(rename.ids.left),
                              .right = right};
    }
}

std::vector<NodePair> probablePairs(const std::vector<ListedRename>& renames) {
    std::vector<NodePair> pairs;
    for (const ListedRename& rename : renames) {
        if (rename.found.probable() && !rename.applied) {
            pairs.push_back(rename.found.nodes);
        }
    }
    return pairs;
}

/// Throws: `InputError` if no node has the property.
void requireProperty(const std::u16string& key, const LoadedPair& inputs) {
    for (const LoadedGraph& input : inputs) {
        for (const auto& node : input.graph->getNodes()) {
            const auto keys = node->getPropertyKeys();
            if (std::ranges::find(keys, key) != keys.end()) {
                return;
            }
        }
    }
    throw InputError(inputs[1].source, 0,
                     fmt::format("no node has the property {}, here or in the other graph (--area)",
                                 inQuotes(ustring_to_utf8(key))));
}

}  // namespace

LinkGraph linkGraph(const LoadedPair& inputs, const InsightOptions& options) {
    insight::LinkOptions linkOptions{.displayedID = displayedID, .isSelected = {}, .isSoft = {}};
    if (!options.linkTypes.empty()) {
        linkOptions.isSelected = [&](std::u16string_view type) {
            return isSelected(options.linkTypes, ustring_to_utf8(type));
        };
    }
    if (haveSoftTypes(inputs)) {
        linkOptions.isSoft = [&](std::u16string_view type) {
            const std::string text = ustring_to_utf8(type);
            return std::ranges::any_of(inputs, [&](const LoadedGraph& input) {
                return matchesAnyGlob(input.softTypes, text);
            });
        };
    }
    return {inputs[0].graph, inputs[1].graph, linkOptions};
}

std::vector<std::string> unmatchedLinkTypes(const LoadedPair& inputs,
                                            const InsightOptions& options) {
    std::vector<std::string> unmatched;
    if (options.linkTypes.empty()) {
        return unmatched;
    }
    const auto types = dependencyTypes(inputs);
    for (const std::string& glob : options.linkTypes) {
        const std::string pattern = glob.substr(glob.starts_with('!') ? 1 : 0);
        if (std::ranges::none_of(
                types, [&](const std::string& type) { return matchesGlob(pattern, type); })) {
            unmatched.push_back(glob);
        }
    }
    return unmatched;
}

std::vector<ListedRename> listRenames(const LoadedPair& inputs, const InsightOptions& options) {
    return listRenames(linkGraph(inputs, options), inputs, options);
}

std::vector<NodeIDs> applyRenames(std::vector<ListedRename>& renames) {
    std::vector<NodeIDs> applied;
    for (ListedRename& rename : renames) {
        rename.applied = rename.found.probable() && !rename.found.ambiguous;
        if (rename.applied) {
            applied.push_back(rename.ids);
        }
    }
    return applied;
}

Insights findInsights(const LoadedPair& inputs, const InsightOptions& options,
                      std::optional<std::vector<ListedRename>> renames) {
    if (options.areas.property) {
        requireProperty(*options.areas.property, inputs);
    }
    Insights insights{.graph = linkGraph(inputs, options),
                      .cycles = {},
                      .hardCycles = {},
                      .reach = {},
                      .areas = {},
                      .areaProperty = options.areas.property,
                      .others = {},
                      .renames = {},
                      .causes = {},
                      .full = options.detail == InsightDetail::full};
    const LinkGraph& graph = insights.graph;
    insights.cycles = insight::findCycles(graph);
    if (haveSoftTypes(inputs)) {
        insights.hardCycles = insight::findCycles(graph, insight::Strength::hard);
    }
    insight::ReachLimits limits;
    if (insights.full) {
        limits.work = std::numeric_limits<std::uint64_t>::max();
    }
    insights.reach = insight::findReach(graph, limits);
    insights.areas = insight::findAreas(graph, options.areas);
    insights.others = insight::findOtherNodes(graph);
    if (renames) {
        insights.renames = std::move(*renames);
        renumber(insights.renames, graph);
    } else {
        insights.renames = listRenames(graph, inputs, options);
    }
    insights.causes = insight::findCauses(graph, probablePairs(insights.renames));
    return insights;
}

bool haveNewCycles(const Insights& insights) {
    const insight::Cycles& cycles = insights.hardCycles ? *insights.hardCycles : insights.cycles;
    return std::ranges::any_of(cycles.families, [](const insight::CycleFamily& family) {
        return family.edit == insight::CycleEdit::added || !family.closing.empty();
    });
}

}  // namespace depcompare
