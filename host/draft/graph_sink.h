#pragma once
// Where every reader puts what it reads: checks it, keeps it small, ends in a draft of the graph.
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <tsl/robin_map.h>

#include "draft/graph_draft.h"
#include "input/limits.h"

namespace depcompare {

/// Returns: a warning about nodes that only edges mention.
[[nodiscard]] std::string onlyInEdges(std::size_t count, std::string_view firstID);

/// Applies the rules that all formats share. Nodes and edges may come in any order, an edge before
/// its ends; the last of several values for one thing holds; every value is the text as it stands.
///
/// Every operation throws `InputError`, with the line where the reader stands, for an ID that was
/// used before or holds U+0001, a malformed time of analysis, and beyond the limits.
class GraphSink {
  public:
    /// Returns: the line where the reader stands, from 1; 0 where it has none.
    using CurrentLine = std::function<std::size_t()>;

    GraphSink(std::string source, const Limits& limits, CurrentLine currentLine = {});

    NodeNumber addNode(std::string_view id);
    /// Returns: the node with this ID, which is added where it was not before.
    NodeNumber addNodeOnce(std::string_view id);
    /// A node without a name is called by its ID.
    void setName(NodeNumber node, std::string_view name);
    /// A node without a type is a file.
    void setType(NodeNumber node, std::string_view type);
    void setProperty(NodeNumber node, std::string_view key, std::string_view value);
    /// What the node had better be known by, where it is unique in both files; the best comes first.
    void addIdCandidate(NodeNumber node, std::string_view id);

    /// Returns: the edge's number.
    std::size_t addEdge(std::string_view upstreamID, std::string_view downstreamID);
    /// Edges without a type have the type `depends`, without component names and types empty ones.
    ///
    /// Requires: `column` is neither of the ends.
    void set(std::size_t edge, EdgeColumn column, std::string_view text);

    /// The key `timestamp` is also the time of the analysis.
    void setGraphProperty(std::string_view key, std::string_view value);

    /// Values for nodes, edges and a graph that have none of their own.
    void setDefaultName(std::string_view name) { defaultName_ = name; }
    void setDefaultType(std::string_view type) { defaultType_ = type; }
    void setDefaultProperty(std::string_view key, std::string_view value);
    void setDefault(EdgeColumn column, std::string_view text);
    void setDefaultGraphProperty(std::string_view key, std::string_view value);

    /// Ends of edges that are never added become nodes, with a warning.
    void addMissingEnds() { addsMissingEnds_ = true; }

    void warn(std::string warning) { draft_.warnings.push_back(std::move(warning)); }

    /// Throws: `InputError` with the line of the first edge whose end was never added, unless such
    ///         ends become nodes.
    [[nodiscard]] GraphDraft finish();

    [[noreturn]] void fail(std::string_view problem) const;
    [[noreturn]] void failForUndirected(std::string_view end, std::string_view otherEnd) const;

  private:
    struct NodeState {
        std::size_t edgeLine = 0;  // of the first edge that names a node not added before
        std::size_t properties = 0;
        bool added = false;
        bool named = false;
    };
    struct GraphProperty {
        PropertyDraft property;
        std::size_t line = 0;
        bool isDefault = false;
    };

    using NumberedTexts =
        tsl::robin_map<std::string_view, std::uint32_t, std::hash<std::string_view>,
                       std::equal_to<>, std::allocator<std::pair<std::string_view, std::uint32_t>>,
                       true>;

    [[nodiscard]] std::size_t line() const { return currentLine_ ? currentLine_() : 0; }
    [[noreturn]] void failForNodes() const;
    void checkText(std::string_view text) const;
    NodeNumber nodeWithID(std::string_view id);
    TextNumber intern(std::string_view text);
    void addGraphProperty(std::string_view key, std::string_view value, bool isDefault);
    [[nodiscard]] std::vector<NodeNumber> missingEnds() const;
    void settleMissingEnds();
    void finishNodes();
    void finishEdges();
    void finishGraphProperties();

    GraphDraft draft_;
    Limits limits_;
    CurrentLine currentLine_;
    NumberedTexts textNumbers_;
    NumberedTexts nodeNumbers_;      // by ID
    std::vector<NodeState> states_;  // by node number
    std::vector<GraphProperty> graphProperties_;
    std::optional<std::string> defaultName_;
    std::string defaultType_ = "file";
    std::array<std::string, edgeColumns> defaultColumns_;
    NodeNumber lastUpstream_ = 0;  // writers tend to list the edges of one node together
    std::size_t addedNodes_ = 0;
    bool addsMissingEnds_ = false;
};

}  // namespace depcompare
