// A stack of the open elements gives each event its meaning; an element without meaning is ignored
// with all its content.
#include "formats/graphml/graphml_reader.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/edge_data.h"
#include "formats/graphml/graphml_values.h"
#include "formats/xml_parser.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

enum class Element : std::uint8_t { document, graphml, key, defaultValue, graph, node, edge, data };

constexpr std::string_view leftOut[] = {"data", "desc", "endpoint", "hyperedge", "locator", "port"};

struct Open {
    Element element = Element::document;
    std::size_t number = 0;   // of the node or edge
    bool undirected = false;  // of a graph: the default of its edges
    bool nested = false;      // of a graph
};

class GraphMLReader final : public XmlEvents {
  public:
    explicit GraphMLReader(Input& input)
        : input_(input),
          sink_(input.name(), input.limits(),
                [this] { return values_.line() != 0 ? values_.line() : xml_.line(); }),
          values_(sink_, input.limits()) {}

    GraphDraft read() {
        xml_.parse(input_, *this);
        if (!hasGraph_) {
            sink_.fail("no <graph> in the document");
        }
        if (hyperedges_ != 0) {
            sink_.warn(ignoredHyperedges(hyperedges_));
        }
        sink_.warnOfUnknown("elements", unknown_);
        return sink_.finish();
    }

    void start(std::string_view element, const XmlAttributes& attributes) override;
    void end() override;
    void text(std::string_view part) override;
    void comment(std::string_view text) override;

  private:
    void noteIgnored(std::string_view element);
    bool startChild(std::string_view element, const XmlAttributes& attributes);
    bool startDocument(std::string_view element);
    bool startInGraphML(std::string_view element, const XmlAttributes& attributes);
    bool startInGraph(std::string_view element, const XmlAttributes& attributes);
    bool startInKey(std::string_view element);
    void startGraph(const XmlAttributes& attributes, bool nested);
    void startNode(const XmlAttributes& attributes);
    void startEdge(const XmlAttributes& attributes);
    void startData(GraphMLCarrier carrier, const XmlAttributes& attributes);
    [[nodiscard]] std::string_view require(const XmlAttributes& attributes,
                                           std::string_view element,
                                           std::string_view attribute) const;
    void open(Element element) { open_.push_back({.element = element}); }
    [[nodiscard]] bool inValue() const {
        const Element element = open_.back().element;
        return element == Element::data || element == Element::defaultValue;
    }

    Input& input_;
    XmlParser xml_;
    GraphSink sink_;
    GraphMLValues values_;
    std::vector<Open> open_{Open{}};
    bool hasGraph_ = false;
    std::size_t passedOver_ = 0;  // how many ignored elements are open
    std::size_t hyperedges_ = 0;
    QuotedNames unknown_;
    std::string prefix_;  // with its colon
};

void GraphMLReader::start(std::string_view element, const XmlAttributes& attributes) {
    if (passedOver_ == 0) {
        if (startChild(element, attributes)) {
            return;
        }
        noteIgnored(element);
    }
    ++passedOver_;
    if (inValue()) {
        values_.startElement(element.substr(element.rfind(':') + 1));
    }
}

/// Elements of other formats, and what is within a value, are no concern of this one.
void GraphMLReader::noteIgnored(std::string_view element) {
    if (inValue() || !element.starts_with(prefix_)) {
        return;
    }
    const std::string_view name = element.substr(prefix_.size());
    if (name.find(':') != name.npos || std::ranges::find(leftOut, name) != std::end(leftOut)) {
        return;
    }
    if (name == "node" || name == "edge") {
        sink_.fail(fmt::format("<{}> is not in a <graph>", name));
    }
    unknown_.add(name);
}

bool GraphMLReader::startChild(std::string_view element, const XmlAttributes& attributes) {
    const Element parent = open_.back().element;
    if (parent == Element::document) {
        return startDocument(element);
    }
    if (!element.starts_with(prefix_)) {
        return false;
    }
    element.remove_prefix(prefix_.size());
    switch (parent) {
        case Element::graphml:
            return startInGraphML(element, attributes);
        case Element::key:
            return startInKey(element);
        case Element::graph:
            return startInGraph(element, attributes);
        case Element::node:
        case Element::edge:
            if (element == "graph") {
                startGraph(attributes, true);
                return true;
            }
            if (element == "data") {
                startData(parent == Element::node ? GraphMLCarrier::node : GraphMLCarrier::edge,
                          attributes);
                return true;
            }
            return false;
        case Element::document:
        case Element::defaultValue:
        case Element::data:
            break;
    }
    return false;
}

bool GraphMLReader::startDocument(std::string_view element) {
    const std::size_t colon = element.rfind(':');
    const std::size_t nameBegin = colon == std::string_view::npos ? 0 : colon + 1;
    if (element.substr(nameBegin) != "graphml") {
        sink_.fail(fmt::format("not GraphML: the root element is {}", inQuotes(element)));
    }
    prefix_ = element.substr(0, nameBegin);
    open(Element::graphml);
    return true;
}

bool GraphMLReader::startInGraphML(std::string_view element, const XmlAttributes& attributes) {
    if (element == "key") {
        (void)require(attributes, "key", "id");
        values_.startKey(attributes);
        open(Element::key);
    } else if (element == "graph") {
        if (std::exchange(hasGraph_, true)) {
            sink_.fail("more than one graph in the file");
        }
        startGraph(attributes, false);
    } else {
        return false;
    }
    return true;
}

bool GraphMLReader::startInGraph(std::string_view element, const XmlAttributes& attributes) {
    if (element == "node") {
        startNode(attributes);
    } else if (element == "edge") {
        startEdge(attributes);
    } else if (element == "data" && !open_.back().nested) {
        startData(GraphMLCarrier::graph, attributes);
    } else {
        hyperedges_ += element == "hyperedge" ? 1 : 0;
        return false;
    }
    return true;
}

bool GraphMLReader::startInKey(std::string_view element) {
    if (element != "default") {
        return false;
    }
    values_.startDefault(xml_.line());
    open(Element::defaultValue);
    return true;
}

void GraphMLReader::startGraph(const XmlAttributes& attributes, bool nested) {
    open_.push_back({.element = Element::graph,
                     .undirected = attributes.find("edgedefault") == "undirected",
                     .nested = nested});
}

void GraphMLReader::startNode(const XmlAttributes& attributes) {
    const NodeNumber node = sink_.addNode(require(attributes, "node", "id"));
    open_.push_back({.element = Element::node, .number = node});
}

void GraphMLReader::startEdge(const XmlAttributes& attributes) {
    const std::string_view source = require(attributes, "edge", "source");
    const std::string_view target = require(attributes, "edge", "target");
    const auto directed = attributes.find("directed");
    const bool undirected =
        directed ? *directed == "false" || *directed == "0" : open_.back().undirected;
    if (undirected) {
        sink_.failForUndirected(source, target);
    }
    const std::size_t edge = sink_.addEdge(source, target);
    for (const auto& [port, column] : {std::pair("sourceport", EdgeColumn::upstreamComponent),
                                       std::pair("targetport", EdgeColumn::downstreamComponent)}) {
        if (const auto name = attributes.find(port)) {
            sink_.set(edge, column, *name);
        }
    }
    open_.push_back({.element = Element::edge, .number = edge});
}

void GraphMLReader::startData(GraphMLCarrier carrier, const XmlAttributes& attributes) {
    values_.startData(carrier, require(attributes, "data", "key"), xml_);
    open(Element::data);
}

void GraphMLReader::text(std::string_view part) {
    if (inValue()) {
        values_.text(part);
    }
}

void GraphMLReader::comment(std::string_view text) {
    if (open_.size() <= 2 && text.find("Created by igraph") != std::string_view::npos) {
        values_.expectIgraph();
    }
}

void GraphMLReader::end() {
    if (passedOver_ != 0) {
        --passedOver_;
        if (inValue()) {
            values_.endElement();
        }
        return;
    }
    const Open ended = open_.back();
    open_.pop_back();
    switch (ended.element) {
        case Element::key:
            values_.endKey();
            break;
        case Element::defaultValue:
            values_.endDefault();
            break;
        case Element::data:
            values_.endData(open_.back().number);
            break;
        case Element::node:
            values_.endNode(static_cast<NodeNumber>(ended.number));
            break;
        case Element::document:
        case Element::graphml:
        case Element::graph:
        case Element::edge:
            break;
    }
}

std::string_view GraphMLReader::require(const XmlAttributes& attributes, std::string_view element,
                                        std::string_view attribute) const {
    const auto value = attributes.find(attribute);
    if (!value) {
        sink_.fail(fmt::format("<{}> lacks the attribute \"{}\"", element, attribute));
    }
    return *value;
}

}  // namespace

bool looksLikeGraphML(std::string_view firstBytes) {
    using namespace std::string_view_literals;
    const bool isWide = firstBytes.starts_with("\xFE\xFF") || firstBytes.starts_with("\xFF\xFE");
    const std::size_t first = firstBytes.find_first_not_of("\xEF\xBB\xBF\xFE\xFF \t\r\n\0"sv);
    return first != std::string_view::npos && firstBytes[first] == '<' &&
           (isWide || firstBytes.find("graphml") != std::string_view::npos);
}

GraphDraft readGraphML(Input& input) {
    return GraphMLReader(input).read();
}

}  // namespace depcompare
