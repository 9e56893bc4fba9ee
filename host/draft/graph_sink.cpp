#include "draft/graph_sink.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "draft/marked_id.h"
#include "draft/timestamp.h"

namespace depcompare {

namespace {

constexpr TextNumber unset = std::numeric_limits<TextNumber>::max();

EdgeDraft edgeWithoutTexts(NodeNumber upstream, NodeNumber downstream) {
    EdgeDraft edge;
    edge.fill(unset);
    at(edge, EdgeColumn::upstream) = upstream;
    at(edge, EdgeColumn::downstream) = downstream;
    return edge;
}

// A file states a default once, but every node has a copy of it.
void requireProportion(const GraphDraft& draft, std::size_t defaultNameBytes) {
    constexpr std::uint64_t freeBytes = 64U << 20U;
    constexpr std::uint64_t freeBytesPerNode = 1U << 10U;
    std::uint64_t bytes = defaultNameBytes;
    for (const PropertyDraft& property : draft.nodeDefaults) {
        bytes += 64 + draft.texts[property.key].size() + property.value.size();
    }
    if (bytes > freeBytesPerNode && (bytes - freeBytesPerNode) * draft.nodes.size() > freeBytes) {
        throw InputError(draft.source, 0,
                         fmt::format("defaults of about {} bytes for each of {} nodes are out of "
                                     "proportion to the file's size",
                                     bytes, draft.nodes.size()));
    }
}

std::string onlyInEdges(std::size_t count, std::string_view firstID) {
    return count == 1
               ? fmt::format("node {} appears only in edges", inQuotes(firstID))
               : fmt::format("{} nodes appear only in edges (first: {})", count, inQuotes(firstID));
}

}  // namespace

GraphSink::GraphSink(std::string source, const Limits& limits, CurrentLine currentLine)
    : limits_(limits), currentLine_(std::move(currentLine)) {
    draft_.source = std::move(source);
    setDefault(EdgeColumn::type, "depends");
}

NodeNumber GraphSink::addNode(std::string_view id) {
    if (const auto node = addNewNode(id)) {
        return *node;
    }
    fail(fmt::format("duplicate node ID {}", inQuotes(id)));
}

std::optional<NodeNumber> GraphSink::addNewNode(std::string_view id) {
    const bool isNew = !states_[nodeWithID(id)].added;
    return isNew ? std::optional(addNodeOnce(id)) : std::nullopt;
}

NodeNumber GraphSink::addNodeOnce(std::string_view id) {
    const NodeNumber node = nodeWithID(id);
    if (!std::exchange(states_[node].added, true) && ++addedNodes_ > limits_.nodes) {
        failForNodes();
    }
    return node;
}

void GraphSink::setName(NodeNumber node, std::string_view name) {
    checkText(name);
    draft_.nodes[node].name = draft_.store.keep(name);
    states_[node].named = true;
}

void GraphSink::setType(NodeNumber node, std::string_view type) {
    draft_.nodes[node].type = intern(type);
}

void GraphSink::setProperty(NodeNumber node, std::string_view key, std::string_view value) {
    if (++states_[node].properties > limits_.properties) {
        fail(fmt::format("more than {} properties on one node", limits_.properties));
    }
    checkText(value);
    draft_.nodeProperties.push_back(
        {.node = node, .property = {.key = intern(key), .value = draft_.store.keep(value)}});
}

void GraphSink::addIdCandidate(NodeNumber node, std::string_view id) {
    checkText(id);
    draft_.idCandidates.push_back({.node = node, .id = draft_.store.keep(id)});
}

std::size_t GraphSink::addEdge(std::string_view upstreamID, std::string_view downstreamID) {
    if (draft_.edges.size() == limits_.edges) {
        fail(tooManyEdges(limits_.edges));
    }
    const auto& nodes = draft_.nodes;
    if (nodes.empty() || nodes[lastUpstream_].id != upstreamID) {
        lastUpstream_ = nodeWithID(upstreamID);
    }
    const NodeNumber downstream = nodeWithID(downstreamID);
    for (const NodeNumber end : {lastUpstream_, downstream}) {
        NodeState& state = states_[end];
        if (!state.added && state.edgeLine == 0) {
            state.edgeLine = line();
        }
    }
    draft_.edges.push_back(edgeWithoutTexts(lastUpstream_, downstream));
    return draft_.edges.size() - 1;
}

void GraphSink::set(std::size_t edge, EdgeColumn column, std::string_view text) {
    at(draft_.edges[edge], column) = intern(text);
}

void GraphSink::setGraphProperty(std::string_view key, std::string_view value) {
    addGraphProperty(key, value, false);
}

void GraphSink::setDefaultProperty(std::string_view key, std::string_view value) {
    checkText(value);
    draft_.nodeDefaults.push_back({.key = intern(key), .value = draft_.store.keep(value)});
    if (draft_.nodeDefaults.size() > limits_.properties) {
        fail(fmt::format("more than {} properties on one node", limits_.properties));
    }
}

void GraphSink::setDefault(EdgeColumn column, std::string_view text) {
    defaultColumns_[static_cast<std::size_t>(column)] = text;
}

void GraphSink::setDefaultGraphProperty(std::string_view key, std::string_view value) {
    addGraphProperty(key, value, true);
}

void GraphSink::warnOfUnknown(std::string_view what, const QuotedNames& names) {
    if (!names.empty()) {
        warn(fmt::format("ignored {} that this format does not have: {}", what, names.text()));
    }
}

GraphDraft GraphSink::finish() {
    settleMissingEnds();
    finishNodes();
    finishEdges();
    finishGraphProperties();
    return std::move(draft_);
}

void GraphSink::fail(std::string_view problem) const {
    throw InputError(draft_.source, line(), problem);
}

void GraphSink::failForUndirected(std::string_view end, std::string_view otherEnd) const {
    fail(fmt::format("undirected edge between {} and {}", inQuotes(end), inQuotes(otherEnd)));
}

void GraphSink::failForNodes() const {
    fail(fmt::format("more than {} nodes (--max-nodes)", limits_.nodes));
}

void GraphSink::checkText(std::string_view text) const {
    if (text.size() > limits_.textBytes) {
        fail(tooLongText(limits_));
    }
}

NodeNumber GraphSink::nodeWithID(std::string_view id) {
    const auto found = nodeNumbers_.find(id);
    if (found != nodeNumbers_.end()) {
        return found->second;
    }
    checkText(id);
    if (holdsMark(id)) {
        fail(markProblem(id));
    }
    // Every node is added or named by an edge, so this limits the nodes that were only named.
    if (draft_.nodes.size() == limits_.nodes * 2) {
        failForNodes();
    }
    const auto node = static_cast<NodeNumber>(draft_.nodes.size());
    draft_.nodes.push_back({.id = draft_.store.keep(id), .name = {}, .type = unset});
    states_.emplace_back();
    nodeNumbers_.emplace(draft_.nodes.back().id, node);
    return node;
}

TextNumber GraphSink::intern(std::string_view text) {
    const auto found = textNumbers_.find(text);
    if (found != textNumbers_.end()) {
        return found->second;
    }
    checkText(text);
    const auto number = static_cast<TextNumber>(draft_.texts.size());
    draft_.texts.push_back(draft_.store.keep(text));
    textNumbers_.emplace(draft_.texts.back(), number);
    return number;
}

void GraphSink::addGraphProperty(std::string_view key, std::string_view value, bool isDefault) {
    if (graphProperties_.size() == limits_.properties) {
        fail(fmt::format("more than {} properties on the graph", limits_.properties));
    }
    checkText(value);
    graphProperties_.push_back({.property = {.key = intern(key), .value = draft_.store.keep(value)},
                                .line = line(),
                                .isDefault = isDefault});
}

std::vector<NodeNumber> GraphSink::missingEnds() const {
    std::vector<NodeNumber> missing;
    for (NodeNumber node = 0; node < states_.size(); ++node) {
        if (!states_[node].added) {
            missing.push_back(node);
        }
    }
    return missing;
}

void GraphSink::settleMissingEnds() {
    const auto missing = missingEnds();
    if (missing.empty()) {
        return;
    }
    const auto lineOf = [&](NodeNumber node) { return states_[node].edgeLine; };
    const auto idOf = [&](NodeNumber node) { return draft_.nodes[node].id; };
    if (!addsMissingEnds_) {
        const NodeNumber first = *std::ranges::min_element(missing, {}, lineOf);
        throw InputError(
            draft_.source, lineOf(first),
            fmt::format("edge end {} is not declared as a node", inQuotes(idOf(first))));
    }
    if (addedNodes_ + missing.size() > limits_.nodes) {
        failForNodes();
    }
    // A report must not depend on the order of the file.
    const std::string_view id = idOf(*std::ranges::min_element(missing, {}, idOf));
    warn(onlyInEdges(missing.size(), id) + (missing.size() == 1 ? "; added it" : "; added them"));
}

void GraphSink::finishNodes() {
    requireProportion(draft_, defaultName_ ? defaultName_->size() : 0);
    const TextNumber defaultType = intern(defaultType_);
    const std::string_view defaultName =
        defaultName_ ? draft_.store.keep(*defaultName_) : std::string_view();
    for (std::size_t i = 0; i < draft_.nodes.size(); ++i) {
        NodeDraft& node = draft_.nodes[i];
        if (node.type == unset) {
            node.type = defaultType;
        }
        if (!states_[i].named) {
            node.name = defaultName_ ? defaultName : node.id;
        }
    }
}

void GraphSink::finishEdges() {
    EdgeDraft defaults{};
    for (std::size_t column = 0; column < edgeColumns; ++column) {
        defaults[column] = intern(defaultColumns_[column]);
    }
    for (EdgeDraft& edge : draft_.edges) {
        for (std::size_t column = 0; column < edgeColumns; ++column) {
            if (edge[column] == unset) {
                edge[column] = defaults[column];
            }
        }
    }
    if (foldsEqualEdges_) {
        std::ranges::sort(draft_.edges);
        draft_.edges.erase(std::unique(draft_.edges.begin(), draft_.edges.end()),
                           draft_.edges.end());
    }
}

void GraphSink::finishGraphProperties() {
    std::stable_partition(graphProperties_.begin(), graphProperties_.end(),
                          [](const GraphProperty& added) { return added.isDefault; });
    const GraphProperty* timestamp = nullptr;
    for (const GraphProperty& added : graphProperties_) {
        draft_.graphProperties.push_back(added.property);
        if (draft_.texts[added.property.key] == "timestamp") {
            timestamp = &added;
        }
    }
    if (timestamp == nullptr) {
        return;
    }
    const std::string_view value = timestamp->property.value;
    const auto time = parseTimestamp(value);
    if (!time) {
        throw InputError(
            draft_.source, timestamp->line,
            fmt::format("timestamp {} is not an ISO 8601 date and time", inQuotes(value)));
    }
    draft_.analysisTime = *time;
}

}  // namespace depcompare
