#include "draft/build_graphs.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include <dependency/graph/graph_builder.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <tsl/robin_map.h>
#include <boost/functional/hash.hpp>

#include "draft/both_sides.h"
#include "draft/choose_node_ids.h"
#include "draft/edit_ids.h"
#include "draft/leave_out.h"
#include "draft/marked_id.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using dependency::graph::Component;
using dependency::graph::GraphBuilder;
using dependency::graph::Node;
using dependency::graph::Property;
using dependency::graph::Type;
using fl::i18n::ustring_to_utf8;
using fl::i18n::utf8_to_ustring;

/// Throws: `InputError` if `orRefuse`; else adds a warning.
void noteMissingFiles(GraphDraft& draft, bool orRefuse) {
    constexpr std::size_t mostTypes = 5;
    std::map<std::string_view, std::size_t> counts;
    for (const NodeDraft& node : draft.nodes) {
        ++counts[draft.texts[node.type]];
    }
    if (counts.empty() || counts.contains("file")) {
        return;
    }
    std::vector<std::string> types;
    for (const auto& [type, count] : counts) {
        if (types.size() == mostTypes) {
            types.emplace_back("...");
            break;
        }
        types.push_back(fmt::format("{} {}", count, inQuotes(type, mostRepeatedBytes / mostTypes)));
    }
    std::string problem = fmt::format(
        "no file nodes, so nothing to compare; use --file-type to choose the types "
        "that count as files (nodes by type: {})",
        fmt::join(types, ", "));
    if (orRefuse) {
        throw InputError(draft.source, 0, problem + ", or --allow-empty to compare nothing");
    }
    draft.warnings.push_back(std::move(problem));
}

void warnOfPositions(GraphDraft& draft) {
    constexpr std::size_t tooFewToTell = 3;
    std::vector<std::string_view> ids;
    ids.reserve(draft.nodes.size());
    for (const NodeDraft& node : draft.nodes) {
        ids.push_back(node.id);
    }
    if (ids.size() >= tooFewToTell && lookPositional(ids)) {
        draft.warnings.push_back(fmt::format(
            "node IDs ({}, {}, ...) look like positions, which may differ between files; "
            "use --node-id to identify nodes by something else",
            inQuotes(ids[0]), inQuotes(ids[1])));
    }
}

/// Makes files of the nodes with one of these types, which they keep as their property `type`.
void applyFileTypes(GraphDraft& draft, const std::vector<std::string>& fileTypes) {
    if (fileTypes.empty()) {
        return;
    }
    const TextNumber file = draft.textNumber("file");
    const TextNumber key = draft.textNumber("type");
    for (NodeNumber number = 0; number < draft.nodes.size(); ++number) {
        NodeDraft& node = draft.nodes[number];
        const std::string_view type = draft.texts[node.type];
        if (node.type != file && std::ranges::find(fileTypes, type) != fileTypes.end()) {
            draft.nodeProperties.push_back(
                {.node = number, .property = {.key = key, .value = type}});
            node.type = file;
        }
    }
}

// Seven digits fit into the string itself; the digits' order is that of their code units.
std::u16string rankAsID(std::size_t rank) {
    constexpr std::u16string_view digits = u"0123456789abcdefghijklmnopqrstuvwxyz";
    std::u16string id(7, digits.front());
    for (auto place = id.rbegin(); rank != 0; ++place, rank /= digits.size()) {
        *place = digits[rank % digits.size()];
    }
    return id;
}

/// Texts in the order of their code units, and the place of each in that order.
struct Ranking {
    std::vector<std::u16string> texts;
    std::vector<std::uint32_t> ranks;  // by the number of the text

    explicit Ranking(std::vector<std::u16string> unordered) : ranks(unordered.size()) {
        std::vector<std::uint32_t> order(unordered.size());
        std::iota(order.begin(), order.end(), 0U);
        std::ranges::sort(order, {},
                          [&](std::uint32_t i) { return std::u16string_view(unordered[i]); });
        texts.reserve(order.size());
        for (std::uint32_t rank = 0; rank < order.size(); ++rank) {
            ranks[order[rank]] = rank;
            texts.push_back(std::move(unordered[order[rank]]));
        }
    }
};

Ranking rankedTexts(const GraphDraft& draft) {
    std::vector<std::u16string> texts;
    texts.reserve(draft.texts.size());
    for (const std::string_view text : draft.texts) {
        texts.push_back(utf8_to_ustring(text));
    }
    return Ranking(std::move(texts));
}

Ranking rankedNodes(const GraphDraft& draft) {
    std::vector<std::u16string> ids;
    ids.reserve(draft.nodes.size());
    for (const NodeDraft& node : draft.nodes) {
        ids.push_back(markedID(utf8_to_ustring(node.id)));
    }
    return Ranking(std::move(ids));
}

class DraftBuilder {
  public:
    explicit DraftBuilder(GraphDraft draft)
        : draft_(std::move(draft)),
          texts_(rankedTexts(draft_)),
          nodeIDs_(rankedNodes(draft_)),
          types_(texts_.texts.size()) {}

    LoadedGraph build() {
        const std::size_t alarms = draft_.alarms.size();
        draft_.warnings.insert(draft_.warnings.begin(), draft_.alarms.begin(), draft_.alarms.end());
        addNodes();
        addDependencies();
        for (auto& [key, value] : propertiesOf({}, draft_.graphProperties)) {
            builder_.setProperty(key, std::move(value));
        }
        builder_.setTimeStamp(draft_.analysisTime);
        return {.graph = builder_.finish(),
                .source = std::move(draft_.source),
                .nodes = draft_.nodes.size(),
                .files = files_,
                .dependencies = draft_.edges.size(),
                .analysisTime = draft_.analysisTime,
                .warnings = std::move(draft_.warnings),
                .alarms = alarms,
                .softTypes = std::move(draft_.softTypes),
                .tellingKeys = {}};
    }

  private:
    const std::shared_ptr<const Type>& type(std::uint32_t rank) {
        auto& type = types_[rank];
        if (!type) {
            type = builder_.type(texts_.texts[rank], texts_.texts[rank]);
        }
        return type;
    }

    std::shared_ptr<const Component> component(std::uint32_t name, std::uint32_t typeRank) {
        auto& component = components_[{name, typeRank}];
        if (!component) {
            component = builder_.component(texts_.texts[name], type(typeRank));
        }
        return component;
    }

    // Values replace defaults; of several values for one key, the last holds.
    std::vector<Property> propertiesOf(std::span<const PropertyDraft> defaults,
                                       std::span<const PropertyDraft> values) {
        std::vector<std::pair<std::uint32_t, std::string_view>> ranked;
        ranked.reserve(defaults.size() + values.size());
        for (const auto& group : {defaults, values}) {
            for (const PropertyDraft& property : group) {
                ranked.emplace_back(texts_.ranks[property.key], property.value);
            }
        }
        std::ranges::stable_sort(ranked, {}, [](const auto& property) { return property.first; });
        std::vector<Property> properties;
        for (std::size_t i = 0; i < ranked.size(); ++i) {
            if (i + 1 == ranked.size() || ranked[i].first != ranked[i + 1].first) {
                properties.emplace_back(texts_.texts[ranked[i].first],
                                        utf8_to_ustring(ranked[i].second));
            }
        }
        return properties;
    }

    void addNodes() {
        std::vector<NodeNumber> numbers(draft_.nodes.size());
        for (NodeNumber number = 0; number < numbers.size(); ++number) {
            numbers[nodeIDs_.ranks[number]] = number;
        }
        auto& properties = draft_.nodeProperties;
        const auto rankOfNode = [&](const NodePropertyDraft& added) {
            return nodeIDs_.ranks[added.node];
        };
        if (!std::ranges::is_sorted(properties, {}, rankOfNode)) {
            std::ranges::stable_sort(properties, {}, rankOfNode);
        }
        nodes_.reserve(numbers.size());
        auto next = properties.cbegin();
        std::vector<PropertyDraft> values;
        for (const NodeNumber number : numbers) {
            values.clear();
            for (; next != properties.cend() && next->node == number; ++next) {
                values.push_back(next->property);
            }
            addNode(number, propertiesOf(draft_.nodeDefaults, values));
        }
        properties = {};
    }

    void addNode(NodeNumber number, std::vector<Property> properties) {
        const NodeDraft& node = draft_.nodes[number];
        const auto& nodeType = type(texts_.ranks[node.type]);
        files_ += *nodeType == *Type::FILE() ? 1 : 0;
        nodes_.push_back(builder_.addNode(std::move(nodeIDs_.texts[nodes_.size()]),
                                          utf8_to_ustring(node.name), nodeType,
                                          std::move(properties)));
    }

    void addDependencies() {
        for (EdgeDraft& edge : draft_.edges) {
            for (std::size_t column = 0; column < edgeColumns; ++column) {
                const auto which = static_cast<EdgeColumn>(column);
                const bool isEnd = which == EdgeColumn::upstream || which == EdgeColumn::downstream;
                edge[column] = (isEnd ? nodeIDs_ : texts_).ranks[edge[column]];
            }
        }
        std::ranges::sort(draft_.edges);
        for (std::size_t rank = 0; rank < draft_.edges.size(); ++rank) {
            const EdgeDraft& edge = draft_.edges[rank];
            builder_.addDependency(rankAsID(rank), nodes_[at(edge, EdgeColumn::upstream)],
                                   nodes_[at(edge, EdgeColumn::downstream)],
                                   type(at(edge, EdgeColumn::type)),
                                   component(at(edge, EdgeColumn::upstreamComponent),
                                             at(edge, EdgeColumn::upstreamComponentType)),
                                   component(at(edge, EdgeColumn::downstreamComponent),
                                             at(edge, EdgeColumn::downstreamComponentType)));
        }
    }

    GraphDraft draft_;
    Ranking texts_;
    Ranking nodeIDs_;
    GraphBuilder builder_;
    std::vector<std::shared_ptr<const Type>> types_;              // by rank
    using NameAndType = std::pair<std::uint32_t, std::uint32_t>;  // by rank
    tsl::robin_map<NameAndType, std::shared_ptr<const Component>, boost::hash<NameAndType>>
        components_;
    std::vector<std::shared_ptr<Node>> nodes_;  // by rank
    std::size_t files_ = 0;
};

LoadedGraph buildRenamed(GraphDraft draft, const std::vector<NodeIDs>& renames) {
    std::map<std::string, std::string, std::less<>> newIDs;
    for (const NodeIDs& rename : renames) {
        newIDs.emplace(ustring_to_utf8(rename.left), ustring_to_utf8(rename.right));
    }
    for (NodeDraft& node : draft.nodes) {
        const auto found = newIDs.find(node.id);
        if (found != newIDs.end()) {
            const std::string_view newID = draft.store.keep(found->second);
            node.name = node.name == node.id ? newID : node.name;
            node.id = newID;
        }
    }
    LoadedGraph graph = DraftBuilder(std::move(draft)).build();
    for (const NodeIDs& rename : renames) {
        graph.oldIDs.emplace(rename.right, rename.left);
    }
    return graph;
}

}  // namespace

std::array<LoadedGraph, 2> buildGraphs(std::array<GraphDraft, 2> drafts, const ReadOptions& options,
                                       const ChooseRenames& chooseRenames) {
    chooseNodeIDs(drafts, options.nodeID);
    editNodeIDs(drafts, options.idEdits);
    std::array<std::size_t, 2> nodes{};
    std::array<std::size_t, 2> edges{};
    for (std::size_t side = 0; side < drafts.size(); ++side) {
        applyFileTypes(drafts[side], options.fileTypes);
        nodes[side] = drafts[side].nodes.size();
        edges[side] = drafts[side].edges.size();
    }
    const std::array<LeftOut, 2> leftOut = leaveOut(drafts, options.selection);
    std::optional<GraphDraft> kept;
    auto graphs = onBothSides([&](std::size_t side) {
        GraphDraft& draft = drafts[side];
        noteMissingFiles(draft, options.requireFiles);
        warnOfPositions(draft);
        if (chooseRenames && side == 0) {
            kept = draft;
        }
        return DraftBuilder(std::move(draft)).build();
    });
    if (kept) {
        if (const auto renames = chooseRenames(graphs); !renames.empty()) {
            graphs[0] = buildRenamed(*std::move(kept), renames);
        }
    }
    for (std::size_t side = 0; side < graphs.size(); ++side) {
        graphs[side].nodesRead = nodes[side];
        graphs[side].dependenciesRead = edges[side];
        graphs[side].leftOut = leftOut[side];
    }
    return graphs;
}

}  // namespace depcompare
