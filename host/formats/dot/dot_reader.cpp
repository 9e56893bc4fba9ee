#include "formats/dot/dot_reader.h"

#include <algorithm>
#include <cctype>
#include <map>
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

/// The attributes that a kind of object has in this graph.
using Attributes = std::vector<Agsym_t*>;

Attributes attributesOf(Agraph_t* graph, int kind) {
    Attributes attributes;
    for (auto* next = agnxtattr(graph, kind, nullptr); next != nullptr;
         next = agnxtattr(graph, kind, next)) {
        attributes.push_back(next);
    }
    return attributes;
}

class DOTReader {
  public:
    explicit DOTReader(Input& input)
        : input_(input), sink_(input.name(), input.limits()), dot_(input), graph_(dot_.get()) {}

    GraphDraft read() {
        legend_ = agsubg(graph_, legendName, 0);
        pointsToWhatIsMade_ = isOfNinja();
        requireShallow(graph_, 1);
        readGraph();
        readNodes();
        readEdges();
        offerLabels();
        return sink_.finish();
    }

  private:
    struct Named {
        NodeNumber number = 0;
        std::string label;                // empty without one
        std::vector<std::string> leadTo;  // the labels of the nodes at the other ends of its edges
    };

    // Ninja draws arrows from what a step reads to what it makes.
    [[nodiscard]] bool isOfNinja() const {
        const auto nodesHave = [this](char* attribute, std::string_view value) {
            const Agsym_t* found = agattr(graph_, AGNODE, attribute, nullptr);
            return found != nullptr && found->defval == value;
        };
        return agnameof(graph_) == std::string_view("ninja") && nodesHave(fontSize, "10") &&
               nodesHave(height, "0.25");
    }

    void requireShallow(Agraph_t* graph, std::size_t depth) const {
        if (depth > input_.limits().nestingDepth) {
            sink_.fail(tooDeep("graphs", input_.limits()));
        }
        for (auto* inner = agfstsubg(graph); inner != nullptr; inner = agnxtsubg(inner)) {
            requireShallow(inner, depth + 1);
        }
    }

    void readGraph() {
        const std::string_view name = agnameof(graph_);
        if (!name.empty() && !name.starts_with('%')) {  // which the library generates
            sink_.setGraphProperty("name", name);
        }
        for (Agsym_t* attribute : attributesOf(graph_, AGRAPH)) {
            const std::string value = agxget(graph_, attribute);
            if (!value.empty() &&
                (!onlyDraws(attribute->name) || attribute->name == std::string_view("label"))) {
                sink_.setGraphProperty(attribute->name, value);
            }
        }
    }

    void readNodes() {
        const Attributes attributes = attributesOf(graph_, AGNODE);
        std::size_t described = 0;
        std::vector<std::string> bare;
        for (auto* node = agfstnode(graph_); node != nullptr; node = agnxtnode(graph_, node)) {
            if (isOfLegend(node)) {
                continue;
            }
            const bool hasOwn = std::ranges::any_of(attributes, [&](Agsym_t* attribute) {
                return agxget(node, attribute) != std::string_view(attribute->defval);
            });
            described += hasOwn ? 1 : 0;
            if (!hasOwn && agdegree(graph_, node, 1, 1) != 0) {
                bare.emplace_back(dot_.nameOf(node));
            }
            readNode(node, attributes);
        }
        // A file that describes its nodes describes all; the others may be slips in edges.
        if (described != 0 && !bare.empty()) {
            const std::string first = inQuotes(*std::ranges::min_element(bare));
            sink_.warn(bare.size() == 1
                           ? fmt::format("node {} has edges, but no attributes", first)
                           : fmt::format("{} nodes have edges, but no attributes (first: {})",
                                         bare.size(), first));
        }
    }

    void readNode(Agnode_t* node, const Attributes& attributes) {
        const std::string id = idOf(node);
        Named& named = nodes_[node];
        named.number = sink_.addNodeOnce(id);
        for (Agsym_t* attribute : attributes) {
            if (attribute->name == std::string_view("label")) {
                named.label = legend_ != nullptr ? targetOf(named.number, agxget(node, attribute))
                                                 : labelOf(node, attribute, id);
            }
        }
        if (!named.label.empty()) {
            sink_.setName(named.number, named.label);
        }
        for (Agsym_t* attribute : attributes) {
            const std::string_view value = agxget(node, attribute);
            const bool isBlank = value.find_first_not_of(' ') == std::string_view::npos;
            if (!onlyDraws(attribute->name) && !isBlank && value != id && value != named.label) {
                sink_.setProperty(named.number, attribute->name, value);
            }
        }
    }

    static std::string labelOf(void* object, Agsym_t* attribute, const std::string& id) {
        char* const label = agxget(object, attribute);
        return aghtmlstr(label) != 0 ? htmlLabelText(label) : labelText(label, id);
    }

    // jdeps appends the archive to a package that others need, but not to one that needs others.
    std::string idOf(Agnode_t* node) const {
        std::string id(dot_.nameOf(node));
        if (const std::string archive = fmt::format(" ({})", agnameof(graph_));
            id.size() > archive.size() && id.ends_with(archive)) {
            id.resize(id.size() - archive.size());
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
        const Attributes attributes = attributesOf(graph_, AGEDGE);
        for (auto* node = agfstnode(graph_); node != nullptr; node = agnxtnode(graph_, node)) {
            for (auto* edge = agfstout(graph_, node); edge != nullptr;
                 edge = agnxtout(graph_, edge)) {
                if (!isOfLegend(agtail(edge)) && !isOfLegend(aghead(edge))) {
                    readEdge(edge, attributes);
                }
            }
        }
    }

    void readEdge(Agedge_t* edge, const Attributes& attributes) {
        std::map<std::string_view, std::string> values;
        for (Agsym_t* attribute : attributes) {
            values[attribute->name] = attribute->name == std::string_view("label")
                                          ? labelOf(edge, attribute, "")
                                          : std::string(agxget(edge, attribute));
        }
        std::pair tail{agtail(edge), std::string(portName(values["tailport"]))};
        std::pair head{aghead(edge), std::string(portName(values["headport"]))};
        if (agisdirected(graph_) == 0) {
            sink_.failForUndirected(dot_.nameOf(tail.first), dot_.nameOf(head.first));
        }
        const std::string type = typeOf(values);
        const std::string& direction = values["dir"];
        if (direction != "back") {
            addEdge(tail, head, type);
        }
        if (direction == "back" || direction == "both") {
            addEdge(head, tail, type);
        }
    }

    std::string typeOf(std::map<std::string_view, std::string>& values) const {
        const std::string& style = values["style"];
        if (legend_ != nullptr) {
            return style == "dotted" ? "private" : style == "dashed" ? "interface" : "public";
        }
        std::string label = values["label"];
        label.erase(0, label.find_first_not_of(' '));
        for (const std::string& text : {values["type"], label, style}) {
            if (!text.empty()) {
                return text;
            }
        }
        return "depends";
    }

    using End = std::pair<Agnode_t*, std::string>;

    void addEdge(const End& upstream, const End& downstream, const std::string& type) {
        nodes_[upstream.first].leadTo.push_back(nodes_[downstream.first].label);
        const auto& [needs, needed] =
            pointsToWhatIsMade_ ? std::pair(downstream, upstream) : std::pair(upstream, downstream);
        const std::size_t edge = sink_.addEdge(idOf(needs.first), idOf(needed.first));
        sink_.set(edge, EdgeColumn::type, type);
        sink_.set(edge, EdgeColumn::upstreamComponent, needs.second);
        sink_.set(edge, EdgeColumn::downstreamComponent, needed.second);
    }

    // Many steps of a build have the same label; together with what it leads to, it is unique.
    void offerLabels() {
        std::vector<std::string_view> ids;
        for (const auto& [node, named] : nodes_) {
            ids.emplace_back(dot_.nameOf(node));
        }
        if (!lookPositional(ids)) {
            return;
        }
        for (auto& [node, named] : nodes_) {
            if (named.label.empty()) {
                continue;
            }
            sink_.addIdCandidate(named.number, named.label);
            std::ranges::sort(named.leadTo);
            if (!named.leadTo.empty()) {
                sink_.addIdCandidate(named.number, fmt::format("{} -> {}", named.label,
                                                               fmt::join(named.leadTo, ", ")));
            }
        }
    }

    [[nodiscard]] bool isOfLegend(Agnode_t* node) const {
        return legend_ != nullptr && agsubnode(legend_, node, 0) != nullptr;
    }

    // The library takes texts that it does not change as `char*`.
    static inline char legendName[] = "clusterLegend";
    static inline char fontSize[] = "fontsize";
    static inline char height[] = "height";

    Input& input_;
    GraphSink sink_;
    DotGraph dot_;
    Agraph_t* graph_;
    Agraph_t* legend_ = nullptr;       // which CMake adds
    bool pointsToWhatIsMade_ = false;  // and not to what is needed
    std::map<Agnode_t*, Named> nodes_;
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
