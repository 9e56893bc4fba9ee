// A stack of the elements that are open says what each event means; whatever has no meaning where
// it stands is passed over with all that it holds.
#include "readers/graphml_reader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "readers/graph_sink.h"
#include "readers/graphml_keys.h"
#include "readers/input_error.h"
#include "readers/xml_parser.h"

namespace depcompare {

namespace {

enum class Element : std::uint8_t { document, graphml, key, defaultValue, graph, node, edge, data };

struct Open {
    Element element = Element::document;
    std::size_t number = 0;   // of the node or edge
    bool undirected = false;  // of a graph: its edges, where they do not say
    bool nested = false;      // of a graph
};

struct KeyDeclaration {
    std::string id;
    std::vector<GraphMLCarrier> carriers;
    std::string name;
    bool carriesText = true;
    std::optional<std::string> defaultValue;
    std::size_t defaultLine = 0;
};

/// The text of the open `data` or `default`.
struct Value {
    std::string text;
    bool holdsElements = false;
    const GraphMLKey* key = nullptr;
    std::size_t line = 0;  // where it begins; 0 where nobody will ask
};

class GraphMLReader final : public XmlEvents {
  public:
    explicit GraphMLReader(Input& input)
        : input_(input), sink_(input.name(), input.limits(), [this] {
              return value_.line != 0 ? value_.line : xml_.line();
          }) {}

    GraphDraft read() {
        xml_.parse(input_, *this);
        return sink_.finish();
    }

    void start(std::string_view element, const XmlAttributes& attributes) override;
    void end() override;
    void text(std::string_view part) override;

  private:
    bool startChild(std::string_view element, const XmlAttributes& attributes);
    bool startDocument(std::string_view element);
    bool startInGraphML(std::string_view element, const XmlAttributes& attributes);
    bool startInGraph(std::string_view element, const XmlAttributes& attributes);
    bool startInKey(std::string_view element);
    void startGraph(const XmlAttributes& attributes, bool nested);
    void startNode(const XmlAttributes& attributes);
    void startEdge(const XmlAttributes& attributes);
    void startData(GraphMLCarrier carrier, const XmlAttributes& attributes);
    void startKey(const XmlAttributes& attributes);
    void startValue(Element element, const GraphMLKey* key);
    void endData(std::size_t number);
    void endKey();
    void setDefault(const GraphMLKey& key, const std::string& value);
    std::string_view require(const XmlAttributes& attributes, std::string_view element,
                             std::string_view attribute) const;
    void open(Element element) { open_.push_back({.element = element}); }
    [[nodiscard]] bool inValue() const {
        const Element element = open_.back().element;
        return element == Element::data || element == Element::defaultValue;
    }

    Input& input_;
    XmlParser xml_;
    GraphSink sink_;
    GraphMLKeys keys_;
    std::vector<Open> open_{Open{}};
    std::size_t passedOver_ = 0;  // how many elements that have no meaning are open
    std::string prefix_;          // with its colon
    KeyDeclaration key_;
    Value value_;
};

void GraphMLReader::start(std::string_view element, const XmlAttributes& attributes) {
    if (passedOver_ == 0 && startChild(element, attributes)) {
        return;
    }
    ++passedOver_;
    if (inValue()) {
        value_.holdsElements = true;
    }
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
        sink_.fail(fmt::format("not GraphML: the outermost element is {}", quoted(element)));
    }
    prefix_ = element.substr(0, nameBegin);
    open(Element::graphml);
    return true;
}

bool GraphMLReader::startInGraphML(std::string_view element, const XmlAttributes& attributes) {
    if (element == "key") {
        startKey(attributes);
    } else if (element == "graph") {
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
        return false;
    }
    return true;
}

bool GraphMLReader::startInKey(std::string_view element) {
    if (element != "default") {
        return false;
    }
    startValue(Element::defaultValue, nullptr);
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
        sink_.fail(
            fmt::format("undirected edge between {} and {}", quoted(source), quoted(target)));
    }
    open_.push_back({.element = Element::edge, .number = sink_.addEdge(source, target)});
}

void GraphMLReader::startData(GraphMLCarrier carrier, const XmlAttributes& attributes) {
    startValue(Element::data, &keys_.find(carrier, require(attributes, "data", "key")));
}

void GraphMLReader::startKey(const XmlAttributes& attributes) {
    const std::string_view id = require(attributes, "key", "id");
    const auto name = attributes.find("attr.name");
    // Keys without a name that carry another tool's graphics say so in an attribute of that tool.
    key_ = {.id = std::string(id),
            .carriers = graphMLCarriers(attributes.find("for")),
            .name = std::string(name.value_or(id)),
            .carriesText = name || !attributes.find("yfiles.type"),
            .defaultValue = {},
            .defaultLine = 0};
    open(Element::key);
}

void GraphMLReader::startValue(Element element, const GraphMLKey* key) {
    open(element);
    value_.text.clear();
    value_.holdsElements = false;
    value_.key = key;
    // Asking for the line of every value would slow the reading down.
    const bool mayBeTime = key == nullptr || key->meaning == GraphMLKey::Meaning::graphProperty;
    value_.line = mayBeTime ? xml_.line() : 0;
}

void GraphMLReader::text(std::string_view part) {
    if (passedOver_ != 0 || !inValue()) {
        return;
    }
    if (value_.text.size() + part.size() > input_.limits().textBytes) {
        sink_.fail(fmt::format("a text of more than {} bytes", input_.limits().textBytes));
    }
    value_.text += part;
}

void GraphMLReader::end() {
    if (passedOver_ != 0) {
        --passedOver_;
        return;
    }
    const Element element = open_.back().element;
    open_.pop_back();
    if (element == Element::key) {
        endKey();
    } else if (element == Element::data && !value_.holdsElements) {
        endData(open_.back().number);
    } else if (element == Element::defaultValue && !value_.holdsElements) {
        key_.defaultValue = value_.text;
        key_.defaultLine = value_.line;
    }
    value_.line = 0;
}

void GraphMLReader::endData(std::size_t number) {
    const GraphMLKey& key = *value_.key;
    const auto node = static_cast<NodeNumber>(number);
    switch (key.meaning) {
        case GraphMLKey::Meaning::ignored:
            break;
        case GraphMLKey::Meaning::graphProperty:
            sink_.setGraphProperty(key.property, value_.text);
            break;
        case GraphMLKey::Meaning::nodeProperty:
            sink_.setProperty(node, key.property, value_.text);
            break;
        case GraphMLKey::Meaning::nodeName:
            sink_.setName(node, value_.text);
            break;
        case GraphMLKey::Meaning::nodeType:
            sink_.setType(node, value_.text);
            break;
        case GraphMLKey::Meaning::edgeColumn:
            sink_.set(number, key.column, value_.text);
            break;
    }
}

void GraphMLReader::endKey() {
    for (const GraphMLCarrier carrier : key_.carriers) {
        const GraphMLKey key = key_.carriesText ? graphMLKey(carrier, key_.name) : GraphMLKey{};
        if (!keys_.declare(carrier, key_.id, key)) {
            sink_.fail(fmt::format("key {} is declared twice, or after its use", quoted(key_.id)));
        }
        if (key_.defaultValue) {
            value_.line = key_.defaultLine;
            setDefault(key, *key_.defaultValue);
        }
    }
}

void GraphMLReader::setDefault(const GraphMLKey& key, const std::string& value) {
    switch (key.meaning) {
        case GraphMLKey::Meaning::ignored:
            break;
        case GraphMLKey::Meaning::graphProperty:
            sink_.setDefaultGraphProperty(key.property, value);
            break;
        case GraphMLKey::Meaning::nodeProperty:
            sink_.setDefaultProperty(key.property, value);
            break;
        case GraphMLKey::Meaning::nodeName:
            sink_.setDefaultName(value);
            break;
        case GraphMLKey::Meaning::nodeType:
            sink_.setDefaultType(value);
            break;
        case GraphMLKey::Meaning::edgeColumn:
            sink_.setDefault(key.column, value);
            break;
    }
}

std::string_view GraphMLReader::require(const XmlAttributes& attributes, std::string_view element,
                                        std::string_view attribute) const {
    const auto value = attributes.find(attribute);
    if (!value) {
        sink_.fail(fmt::format("<{}> without the attribute \"{}\"", element, attribute));
    }
    return *value;
}

}  // namespace

bool looksLikeGraphML(std::string_view firstBytes) {
    using namespace std::string_view_literals;
    for (const std::string_view mark : {"\xEF\xBB\xBF"sv, "\xFE\xFF"sv, "\xFF\xFE"sv}) {
        if (firstBytes.starts_with(mark)) {
            firstBytes.remove_prefix(mark.size());
        }
    }
    const std::size_t first = firstBytes.find_first_not_of(" \t\r\n\0"sv);
    return first != std::string_view::npos && firstBytes[first] == '<';
}

GraphDraft readGraphML(Input& input) {
    return GraphMLReader(input).read();
}

}  // namespace depcompare
