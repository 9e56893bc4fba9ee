#include "formats/dot/dot_reader.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/choose_node_ids.h"
#include "draft/graph_sink.h"
#include "formats/dot/dot_attributes.h"
#include "formats/dot/dot_graph.h"
#include "formats/dot/dot_labels.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

class DOTReader {
  public:
    explicit DOTReader(Input& input)
        : sink_(input.name(), input.limits()),
          graph_(parseDOT(input)),
          nodes_(graph_.nodes.size()) {}

    GraphDraft read() {
        findLegend();
        pointsToWhatIsMade_ = isOfNinja();
        readGraph();
        readNodes();
        readEdges();
        offerLabels();
        return sink_.finish();
    }

  private:
    struct Named {
        NodeNumber number = 0;
        std::string_view id;
        std::string label;                // empty without one
        std::vector<NodeNumber> leadsTo;  // the nodes at the other ends of its edges
        bool isOfLegend = false;
        bool hasEdges = false;
    };

    void findLegend() {
        const auto found = graph_.namedSubgraphs.find({0, "clusterLegend"});
        hasLegend_ = found != graph_.namedSubgraphs.end();
        if (hasLegend_) {
            std::uint64_t lookedAt = 0;
            for (const NodeNumber node : graph_.nodesIn(found->second, lookedAt)) {
                nodes_[node].isOfLegend = true;
            }
        }
    }

    /// Returns: the defaults of nodes at the end of the file.
    [[nodiscard]] DotObject lastDefaults() const {
        return {.defaults = graph_.subgraphs.front().defaults[DotSubgraph::nodes], .own = {}};
    }

    // Ninja draws arrows from what a step reads to what it makes.
    [[nodiscard]] bool isOfNinja() const {
        return graph_.name == "ninja" && attributeOf(lastDefaults(), "fontsize").value == "10" &&
               attributeOf(lastDefaults(), "height").value == "0.25";
    }

    void readGraph() {
        if (!graph_.name.empty()) {
            sink_.setGraphProperty("name", graph_.name);
        }
        keepLast(graph_.attributes);
        for (const DotAttribute& attribute : graph_.attributes) {
            if (!attribute.value.empty() &&
                (!onlyDraws(attribute.name) || attribute.name == "label")) {
                sink_.setGraphProperty(attribute.name, attribute.value);
            }
        }
    }

    void readNodes() {
        for (const DotEdge& edge : graph_.edges) {
            nodes_[edge.tail].hasEdges = true;
            nodes_[edge.head].hasEdges = true;
        }
        const auto& defaults = lastDefaults().defaults->attributes;
        bool someDescribed = false;
        std::vector<std::string_view> bare;
        for (NodeNumber node = 0; node < nodes_.size(); ++node) {
            if (nodes_[node].isOfLegend) {
                continue;
            }
            const auto attributes = attributesOf(graph_.nodes[node]);
            const bool isDescribed = attributes != defaults;
            someDescribed = someDescribed || isDescribed;
            if (!isDescribed && nodes_[node].hasEdges) {
                bare.push_back(graph_.nodes[node].id);
            }
            readNode(node, attributes);
        }
        // A file that describes its nodes describes all; the others may be slips in edges.
        if (someDescribed && !bare.empty()) {
            const std::string first = inQuotes(*std::ranges::min_element(bare));
            sink_.warn(bare.size() == 1
                           ? fmt::format("node {} has edges, but no attributes", first)
                           : fmt::format("{} nodes have edges, but no attributes (first: {})",
                                         bare.size(), first));
        }
    }

    void readNode(NodeNumber node, const std::vector<DotAttribute>& attributes) {
        const DotNode& read = graph_.nodes[node];
        Named& named = nodes_[node];
        named.id = idOf(read.id);
        named.number = sink_.addNodeOnce(named.id);
        const DotAttribute label = attributeOf(read, "label");
        named.label = hasLegend_ ? targetOf(named.number, label.value) : labelOf(label, named.id);
        if (!named.label.empty()) {
            sink_.setName(named.number, named.label);
        }
        for (const DotAttribute& attribute : attributes) {
            const bool isBlank = attribute.value.find_first_not_of(' ') == std::string_view::npos;
            if (!onlyDraws(attribute.name) && !isBlank && attribute.value != named.id &&
                attribute.value != named.label) {
                sink_.setProperty(named.number, attribute.name, attribute.value);
            }
        }
    }

    std::string labelOf(const DotAttribute& label, std::string_view id) {
        constexpr std::string_view idEscape = "\\N";
        for (std::size_t found = label.value.find(idEscape); found != std::string_view::npos;
             found = label.value.find(idEscape, found + idEscape.size())) {
            repeat(id.size());
        }
        return label.isHtml ? htmlLabelText(label.value) : labelText(label.value, id);
    }

    // jdeps appends the archive to a package that others need, but not to one that needs others.
    [[nodiscard]] std::string_view idOf(std::string_view id) const {
        // As jdeps writes the archive of a class.
        if (const std::string archive = fmt::format(" ({})", graph_.name);
            !graph_.name.empty() && id.size() > archive.size() && id.ends_with(archive)) {
            id.remove_suffix(archive.size());
        }
        if (id.find("\\n") != std::string::npos && (id.starts_with("//") || id.starts_with('@'))) {
            sink_.fail(
                fmt::format("the node {} stands for several targets; bazel query "
                            "--nograph:factored writes them one by one",
                            inQuotes(id)));
        }
        return id;
    }

    // CMake writes a target's other names after its own: "store\n(Notes::store)".
    std::string targetOf(NodeNumber node, std::string_view label) {
        constexpr std::string_view lineBreak = "\\n";
        const std::size_t end = label.find(lineBreak);
        if (end != std::string_view::npos) {
            sink_.setProperty(node, "alias", labelText(label.substr(end + lineBreak.size()), ""));
        }
        return labelText(label.substr(0, end), "");
    }

    void readEdges() {
        for (const DotEdge& edge : graph_.edges) {
            if (!nodes_[edge.tail].isOfLegend && !nodes_[edge.head].isOfLegend) {
                readEdge(edge);
            }
        }
        if (loose_ != 0) {
            sink_.warn(
                fmt::format("edges without a direction (dir=none), read as from the first end "
                            "to the second: {} (first: {} -> {})",
                            loose_, inQuotes(firstLoose_.first), inQuotes(firstLoose_.second)));
        }
    }

    void readEdge(const DotEdge& edge) {
        if (!graph_.isDirected) {
            sink_.failForUndirected(graph_.nodes[edge.tail].id, graph_.nodes[edge.head].id);
        }
        const End tail{edge.tail, portName(attributeOf(edge, "tailport").value)};
        const End head{edge.head, portName(attributeOf(edge, "headport").value)};
        const std::string type = typeOf(edge);
        const std::string_view direction = attributeOf(edge, "dir").value;
        if (direction == "none") {
            const std::pair ends(nodes_[tail.first].id, nodes_[head.first].id);
            firstLoose_ = loose_++ == 0 ? ends : std::min(firstLoose_, ends);
        }
        if (direction != "back") {
            addEdge(tail, head, type);
        }
        if (direction == "back" || direction == "both") {
            addEdge(head, tail, type);
        }
    }

    [[nodiscard]] std::string typeOf(const DotEdge& edge) {
        const std::string_view style = attributeOf(edge, "style").value;
        if (hasLegend_) {
            return style == "dotted" ? "private" : style == "dashed" ? "interface" : "public";
        }
        std::string label = labelOf(attributeOf(edge, "label"), "");
        label.erase(0, label.find_first_not_of(' '));
        for (const std::string_view text :
             {attributeOf(edge, "type").value, std::string_view(label), style}) {
            if (!text.empty()) {
                return std::string(text);
            }
        }
        return "depends";
    }

    using End = std::pair<NodeNumber, std::string_view>;

    void addEdge(const End& upstream, const End& downstream, const std::string& type) {
        nodes_[upstream.first].leadsTo.push_back(downstream.first);
        const auto& [needs, needed] =
            pointsToWhatIsMade_ ? std::pair(downstream, upstream) : std::pair(upstream, downstream);
        const std::size_t edge = sink_.addEdge(nodes_[needs.first].id, nodes_[needed.first].id);
        sink_.set(edge, EdgeColumn::type, type);
        sink_.set(edge, EdgeColumn::upstreamComponent, needs.second);
        sink_.set(edge, EdgeColumn::downstreamComponent, needed.second);
    }

    // Many steps of a build have the same label; together with what it leads to, it is unique.
    void offerLabels() {
        std::vector<std::string_view> ids;
        for (NodeNumber node = 0; node < nodes_.size(); ++node) {
            if (!nodes_[node].isOfLegend) {
                ids.push_back(graph_.nodes[node].id);
            }
        }
        if (!lookPositional(ids)) {
            return;
        }
        for (const Named& named : nodes_) {
            if (named.isOfLegend || named.label.empty()) {
                continue;
            }
            sink_.addIdCandidate(named.number, named.label);
            std::vector<std::string_view> leadsTo;
            for (const NodeNumber other : named.leadsTo) {
                leadsTo.emplace_back(nodes_[other].label);
                repeat(leadsTo.back().size());
            }
            std::ranges::sort(leadsTo);
            if (!leadsTo.empty()) {
                sink_.addIdCandidate(
                    named.number, fmt::format("{} -> {}", named.label, fmt::join(leadsTo, ", ")));
            }
        }
    }

    /// Counts what labels take from other texts.
    void repeat(std::uint64_t bytes) {
        repeatedBytes_ += bytes;
        if (repeatedBytes_ > mostRepeated(graph_.fileBytes)) {
            sink_.fail("labels are out of proportion to the file's size");
        }
    }

    GraphSink sink_;
    DotGraph graph_;
    bool hasLegend_ = false;           // which CMake adds
    bool pointsToWhatIsMade_ = false;  // and not to what is needed
    std::vector<Named> nodes_;         // in the order of the graph
    std::uint64_t repeatedBytes_ = 0;
    std::size_t loose_ = 0;  // edges without a direction
    std::pair<std::string_view, std::string_view> firstLoose_;
};

std::string_view withoutComments(std::string_view text) {
    for (;;) {
        const std::size_t first = text.find_first_not_of(" \t\r\n");
        text.remove_prefix(std::min(first, text.size()));
        const bool block = text.starts_with("/*");
        if (!block && !text.starts_with("//") && !text.starts_with('#')) {
            return text;
        }
        const std::size_t end = text.find(block ? "*/" : "\n");
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + (block ? 2 : 1));
    }
}

bool takeWord(std::string_view& text, std::string_view word) {
    const auto isSame = [](char one, char other) {
        return std::tolower(static_cast<unsigned char>(one)) == other;
    };
    if (text.size() < word.size() ||
        !std::ranges::equal(text.substr(0, word.size()), word, isSame)) {
        return false;
    }
    text = withoutComments(text.substr(word.size()));
    return true;
}

}  // namespace

bool looksLikeDOT(std::string_view firstBytes) {
    if (firstBytes.starts_with("\xEF\xBB\xBF")) {
        firstBytes.remove_prefix(3);
    }
    std::string_view text = withoutComments(firstBytes);
    takeWord(text, "strict");
    if (!takeWord(text, "digraph") && !takeWord(text, "graph")) {
        return false;
    }
    // Mermaid and GML begin with this word too; here at most a name comes before the brace.
    if (text.starts_with('"')) {
        std::size_t end = 1;
        while (end < text.size() && text[end] != '"') {
            end += text[end] == '\\' ? 2 : 1;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    } else {
        text.remove_prefix(std::min(text.find_first_of(" \t\r\n{["), text.size()));
    }
    text = withoutComments(text);
    return text.empty() || text.front() == '{';
}

GraphDraft readDOT(Input& input) {
    return DOTReader(input).read();
}

}  // namespace depcompare
