#pragma once
// Passes the texts of the elements of a GraphML file to a sink.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "draft/graph_sink.h"
#include "formats/graphml/graphml_keys.h"
#include "formats/xml_parser.h"

namespace depcompare {

/// Stores the keys, and the one value that is open: data of an element, or the default of a key. Of
/// data that contain elements, only the label of yEd's graphics counts.
class GraphMLValues {
  public:
    GraphMLValues(GraphSink& sink, const Limits& limits) : sink_(sink), limits_(limits) {}

    /// Applies the rules for files of igraph, which numbers its nodes anew each time.
    void expectIgraph() { isIgraph_ = true; }

    /// Requires: `attributes` has `id`.
    void startKey(const XmlAttributes& attributes);
    void endKey();

    void startDefault(std::size_t line);
    void endDefault();
    void startData(GraphMLCarrier carrier, std::string_view key, const XmlParser& parser);
    /// `number` is that of the node or edge.
    void endData(std::size_t number);
    void endNode(NodeNumber node);

    /// Inside of a value.
    void startElement(std::string_view name);
    void endElement();
    void text(std::string_view part);

    /// Returns: the first line of the value that is being put into the sink; 0 if the parser's line
    ///          is good enough.
    [[nodiscard]] std::size_t line() const { return line_; }

  private:
    struct Declaration {
        std::string id;
        std::vector<GraphMLCarrier> carriers;
        std::string name;
        std::string graphics;  // of what yEd's graphics are; empty for text
        std::optional<std::string> defaultValue = {};
        std::size_t defaultLine = 0;
    };

    void startValue(const GraphMLKey* key, std::size_t line);
    [[nodiscard]] bool isGraphics() const;
    void put(const GraphMLKey& key, std::size_t number);
    void countKey(std::string_view name);
    void setDefault(const GraphMLKey& key, const std::string& value);

    GraphSink& sink_;
    const Limits& limits_;
    GraphMLKeys keys_;
    Declaration declared_;
    std::uint64_t longKeyBytes_ = 0;
    bool isIgraph_ = false;
    std::optional<std::string> igraphID_;    // of the open node
    std::optional<std::string> igraphName_;  // of the open node

    std::string text_;
    const GraphMLKey* key_ = nullptr;
    std::size_t line_ = 0;
    std::size_t depth_ = 0;       // of elements inside of the value
    std::size_t labelDepth_ = 0;  // of the open label; 0 without one
    bool holdsElements_ = false;
};

}  // namespace depcompare
