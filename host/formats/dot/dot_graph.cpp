// A statement may hold subgraphs, whose statements may hold others: what is open waits in a stack, so
// that no depth of a file can exhaust that of the program.
#include "formats/dot/dot_graph.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <tuple>
#include <utility>

#include <fmt/format.h>
#include <tsl/robin_map.h>

#include "draft/seeded_hash.h"
#include "formats/dot/dot_attributes.h"
#include "formats/dot/dot_tokens.h"
#include "input/input_error.h"
#include "input/limits.h"

namespace depcompare {

namespace {

std::uint64_t bytesOf(const std::vector<DotAttribute>& attributes) {
    std::uint64_t bytes = 0;
    for (const DotAttribute& attribute : attributes) {
        bytes += 64 + attribute.name.size() + attribute.value.size();
    }
    return bytes;
}

class DotParser {
  public:
    explicit DotParser(Input& input)
        : source_(input.name()), limits_(input.limits()), tokens_(input) {}

    DotGraph parse() {
        readHead();
        while (!open_.empty()) {
            if (take("}")) {
                closeGraph();
            } else {
                readStatement();
            }
        }
        if (tokens_.is("strict") || tokens_.is("graph") || tokens_.is("digraph")) {
            tokens_.fail("more than one graph in the file");
        }
        if (tokens_.kind() != DotTokens::Kind::end) {
            tokens_.failForSyntax();
        }
        graph_.fileBytes = tokens_.bytesRead();
        return std::move(graph_);
    }

  private:
    struct End {
        NodeNumber node = 0;
        std::optional<std::string_view> port;
    };
    /// One side of an edge: nodes, or a subgraph.
    struct Ends {
        std::vector<End> nodes;
        std::optional<std::size_t> subgraph;
    };
    struct Open {
        std::size_t subgraph = 0;
        std::vector<Ends> statement;  // as far as it is read
    };
    struct Known {
        std::size_t edge = 0;
        std::optional<std::string_view> key;
    };

    bool take(std::string_view fixed) {
        const bool isHere = tokens_.is(fixed);
        if (isHere) {
            tokens_.advance();
        }
        return isHere;
    }

    void expect(std::string_view fixed) {
        if (!take(fixed)) {
            tokens_.failForSyntax();
        }
    }

    void takeName() {
        if (!tokens_.isName()) {
            tokens_.failForSyntax();
        }
        tokens_.take(name_);
    }

    std::string_view takeText() {
        takeName();
        return graph_.texts.keep(name_);
    }

    void readHead() {
        if (tokens_.kind() == DotTokens::Kind::end) {
            throw InputError(source_, 0, "no graph in the file");
        }
        graph_.isStrict = take("strict");
        graph_.isDirected = take("digraph");
        if (!graph_.isDirected) {
            expect("graph");
        }
        if (tokens_.isName()) {
            graph_.name = takeText();
        }
        expect("{");
        const DotDefaults* none = &graph_.defaults.emplace_back();
        graph_.subgraphs.emplace_back().defaults = {none, none};
        open_.emplace_back();
    }

    void closeGraph() {
        const std::size_t closed = open_.back().subgraph;
        open_.pop_back();
        if (!open_.empty()) {
            open_.back().statement.push_back({.nodes = {}, .subgraph = closed});
            continueStatement();
        }
    }

    void readStatement() {
        if (readDefaults() || openSubgraph()) {
            return;
        }
        takeName();
        if (tokens_.is("=")) {
            const DotAttribute attribute = readAttribute();
            if (open_.size() == 1) {
                graph_.attributes.push_back(attribute);
            }
            take(";");
        } else {
            readNodes();
            continueStatement();
        }
    }

    /// Returns: whether there were any.
    bool readDefaults() {
        const bool ofNodes = tokens_.is("node");
        const bool ofEdges = tokens_.is("edge");
        if (!ofNodes && !ofEdges && !tokens_.is("graph")) {
            return false;
        }
        tokens_.advance();
        if (!tokens_.is("[")) {
            tokens_.failForSyntax();
        }
        auto attributes = readAttributes();
        take(";");
        if (!ofNodes && !ofEdges) {
            if (open_.size() == 1) {
                std::ranges::copy(attributes, std::back_inserter(graph_.attributes));
            }
            return true;
        }
        std::erase_if(attributes, [&](const DotAttribute& attribute) {
            return ofEdges && attribute.name == "key";
        });
        const auto kind = ofNodes ? DotSubgraph::nodes : DotSubgraph::edges;
        DotSubgraph& subgraph = current();
        subgraph.defaults[kind] = joined(*subgraph.defaults[kind], attributes);
        std::ranges::copy(attributes, std::back_inserter(subgraph.own[kind]));
        return true;
    }

    /// Returns: whether one begins here.
    bool openSubgraph() {
        const bool isSubgraph = take("subgraph");
        std::optional<std::string_view> name;
        if (isSubgraph && tokens_.isName()) {
            name = takeText();
        }
        if (!isSubgraph && !tokens_.is("{")) {
            return false;
        }
        if (open_.size() == limits_.nestingDepth) {
            tokens_.fail(tooDeep("graphs", limits_));
        }
        expect("{");
        const std::size_t outer = open_.back().subgraph;
        std::size_t number = graph_.subgraphs.size();
        if (name) {
            number = graph_.namedSubgraphs.try_emplace({outer, *name}, number).first->second;
        }
        if (number == graph_.subgraphs.size()) {
            graph_.subgraphs.emplace_back();
            graph_.subgraphs[outer].inner.push_back(number);
        }
        DotSubgraph& opened = graph_.subgraphs[number];
        for (const auto kind : {DotSubgraph::nodes, DotSubgraph::edges}) {
            keepLast(opened.own[kind]);  // it may be opened for each node of its own
            opened.defaults[kind] =
                joined(*graph_.subgraphs[outer].defaults[kind], opened.own[kind]);
        }
        open_.push_back({.subgraph = number, .statement = {}});
        return true;
    }

    /// After the first node's name.
    void readNodes() {
        Ends& ends = open_.back().statement.emplace_back();
        for (;;) {
            End& end = ends.nodes.emplace_back();
            end.node = mentioned();
            if (take(":")) {
                end.port = takeText();
                if (take(":")) {
                    takeName();
                }
            }
            if (!take(",")) {
                return;
            }
            takeName();
        }
    }

    /// After the nodes or the subgraph with which it begins or which follow an arrow.
    void continueStatement() {
        while (take(graph_.isDirected ? "->" : "--")) {
            if (openSubgraph()) {
                return;
            }
            takeName();
            readNodes();
        }
        auto attributes = readAttributes();
        take(";");
        auto& statement = open_.back().statement;
        if (statement.size() == 1) {
            bool isFirst = true;
            for (const End& end : statement.front().nodes) {
                addTo(graph_.nodes[end.node], attributes, std::exchange(isFirst, false));
            }
        } else {
            addEdges(statement, std::move(attributes));
        }
        statement.clear();
    }

    std::vector<DotAttribute> readAttributes() {
        std::vector<DotAttribute> attributes;
        while (take("[")) {
            while (!take("]")) {
                takeName();
                attributes.push_back(readAttribute());
                if (!take(",")) {
                    take(";");
                }
            }
        }
        return attributes;
    }

    /// After the name.
    DotAttribute readAttribute() {
        DotAttribute attribute{.name = graph_.texts.keep(name_), .value = {}};
        expect("=");
        attribute.isHtml = tokens_.kind() == DotTokens::Kind::html;
        attribute.value = takeText();
        return attribute;
    }

    DotSubgraph& current() { return graph_.subgraphs[open_.back().subgraph]; }

    /// Returns: the node whose name was just read.
    NodeNumber mentioned() {
        auto found = nodeNumbers_.find(name_);
        if (found == nodeNumbers_.end()) {
            DotNode& node = graph_.nodes.emplace_back();
            node.id = graph_.texts.keep(name_);
            node.defaults = current().defaults[DotSubgraph::nodes];
            repeat(node.defaults->propertyBytes);
            found = nodeNumbers_.emplace(node.id, static_cast<NodeNumber>(graph_.nodes.size() - 1))
                        .first;
        }
        if (open_.size() > 1) {
            current().mentioned.push_back(found->second);
        }
        return found->second;
    }

    void addEdges(std::vector<Ends>& statement, std::vector<DotAttribute> attributes) {
        std::optional<std::string_view> key;
        for (const DotAttribute& attribute : attributes) {
            key = attribute.name == "key" ? attribute.value : key;
        }
        std::erase_if(attributes, [](const DotAttribute& given) { return given.name == "key"; });
        for (Ends& ends : statement) {
            if (ends.subgraph) {
                std::uint64_t lookedAt = 0;
                for (const NodeNumber node : graph_.nodesIn(*ends.subgraph, lookedAt)) {
                    ends.nodes.push_back({.node = node, .port = {}});
                }
                repeat(lookedAt * sizeof(End));
            }
        }
        bool isFirst = true;
        for (std::size_t i = 1; i < statement.size(); ++i) {
            for (const End& tail : statement[i - 1].nodes) {
                for (const End& head : statement[i].nodes) {
                    repeat(16);
                    if (DotEdge* edge = edgeBetween(tail, head, key)) {
                        addPort(*edge, "tailport", tail.port);
                        addPort(*edge, "headport", head.port);
                        addTo(*edge, attributes, std::exchange(isFirst, false));
                    }
                }
            }
        }
    }

    /// Returns: nothing if the graph may not have this one as well.
    DotEdge* edgeBetween(const End& tail, const End& head,
                         const std::optional<std::string_view>& key) {
        const std::size_t number = graph_.edges.size();
        if (graph_.isStrict || key) {
            const auto [found, isNew] = knownEdges_.try_emplace(
                {tail.node, head.node, graph_.isStrict ? std::string_view() : *key},
                Known{.edge = number, .key = key});
            if (!isNew) {
                const Known& known = found->second;
                return !key || key == known.key ? &graph_.edges[known.edge] : nullptr;
            }
        }
        requireProportion(number);
        DotEdge& edge = graph_.edges.emplace_back();
        edge.defaults = current().defaults[DotSubgraph::edges];
        edge.tail = tail.node;
        edge.head = head.node;
        return &edge;
    }

    void addPort(DotEdge& edge, std::string_view name,
                 const std::optional<std::string_view>& port) {
        if (port) {
            edge.own.push_back({.name = name, .value = *port});
            repeat(bytesOf({edge.own.back()}));
        }
    }

    void addTo(DotObject& object, const std::vector<DotAttribute>& attributes, bool isFirst) {
        object.own.insert(object.own.end(), attributes.begin(), attributes.end());
        repeat(isFirst ? 0 : bytesOf(attributes));
    }

    const DotDefaults* joined(const DotDefaults& outer, const std::vector<DotAttribute>& inner) {
        if (inner.empty()) {
            return &outer;
        }
        repeat(outer.bytes + bytesOf(inner));
        DotDefaults both{.attributes = attributesOf({.defaults = &outer, .own = inner})};
        both.bytes = bytesOf(both.attributes);
        for (const DotAttribute& attribute : both.attributes) {
            both.propertyBytes += onlyDraws(attribute.name) ? 0 : bytesOf({attribute});
        }
        return &graph_.defaults.emplace_back(std::move(both));
    }

    // A few words can make any number of edges: {a b ...} -> {c d ...}. One that is written itself has
    // two bytes at least.
    void requireProportion(std::size_t edges) const {
        if (edges == limits_.edges) {
            tokens_.failBefore(tooManyEdges(limits_.edges));
        }
        if (edges >= 100'000 + 4 * tokens_.bytesRead()) {
            tokens_.failBefore(fmt::format(
                "more than {} edges, which is out of proportion to the file's size", edges));
        }
    }

    /// Counts what the file states once for many.
    void repeat(std::uint64_t bytes) {
        repeatedBytes_ += bytes;
        if (repeatedBytes_ > mostRepeated(tokens_.bytesRead())) {
            tokens_.failBefore(
                "what is said of many nodes or edges at once is out of proportion to the file's "
                "size");
        }
    }

    const std::string& source_;
    const Limits& limits_;
    DotTokens tokens_;
    DotGraph graph_;
    std::vector<Open> open_;
    std::string name_;  // the last one that was taken
    tsl::robin_map<std::string_view, NodeNumber, SeededHash> nodeNumbers_;
    std::map<std::tuple<NodeNumber, NodeNumber, std::string_view>, Known> knownEdges_;
    std::uint64_t repeatedBytes_ = 0;
};

}  // namespace

std::vector<NodeNumber> DotGraph::nodesIn(std::size_t subgraph, std::uint64_t& lookedAt) const {
    std::vector<NodeNumber> found;
    std::vector<std::size_t> left{subgraph};
    while (!left.empty()) {
        const DotSubgraph& next = subgraphs[left.back()];
        left.pop_back();
        lookedAt += 1 + next.mentioned.size();
        found.insert(found.end(), next.mentioned.begin(), next.mentioned.end());
        left.insert(left.end(), next.inner.begin(), next.inner.end());
    }
    std::ranges::sort(found);
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

void keepLast(std::vector<DotAttribute>& attributes) {
    std::ranges::reverse(attributes);
    std::ranges::stable_sort(attributes, {}, &DotAttribute::name);
    const auto haveOneName = [](const DotAttribute& one, const DotAttribute& next) {
        return one.name == next.name;
    };
    attributes.erase(std::unique(attributes.begin(), attributes.end(), haveOneName),
                     attributes.end());
}

std::vector<DotAttribute> attributesOf(const DotObject& object) {
    std::vector<DotAttribute> all = object.defaults->attributes;
    if (!object.own.empty()) {
        all.insert(all.end(), object.own.begin(), object.own.end());
        keepLast(all);
        std::erase_if(all, [](const DotAttribute& attribute) { return attribute.value.empty(); });
    }
    return all;
}

DotAttribute attributeOf(const DotObject& object, std::string_view name) {
    const auto own =
        std::ranges::find(object.own.rbegin(), object.own.rend(), name, &DotAttribute::name);
    if (own != object.own.rend()) {
        return *own;
    }
    const auto& defaults = object.defaults->attributes;
    const auto found = std::ranges::lower_bound(defaults, name, {}, &DotAttribute::name);
    return found != defaults.end() && found->name == name ? *found : DotAttribute();
}

std::uint64_t mostRepeated(std::uint64_t fileBytes) {
    return (64U << 20U) + 64 * fileBytes;
}

DotGraph parseDOT(Input& input) {
    return DotParser(input).parse();
}

}  // namespace depcompare
