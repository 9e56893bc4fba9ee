#pragma once
// Takes what every reader reads, checks it, and makes a draft of the graph.
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
#include "draft/seeded_hash.h"
#include "input/input_error.h"
#include "input/limits.h"

namespace depcompare {

/// Applies the rules that all formats share. Nodes and edges may be added in any order, an edge before
/// its ends; the last of several values for one thing holds; every value is taken verbatim.
///
/// Every operation throws `InputError`, with the reader's current line, for a duplicate ID, an ID that
/// contains the mark of IDs, a malformed timestamp, or an exceeded limit.
class GraphSink {
  public:
    /// Returns: the reader's current line, from 1; 0 if it has none.
    using CurrentLine = std::function<std::size_t()>;

    GraphSink(std::string source, const Limits& limits, CurrentLine currentLine = {});

    NodeNumber addNode(std::string_view id);
    /// Returns: the node with this ID, which is added if it was not before.
    NodeNumber addNodeOnce(std::string_view id);
    /// Returns: the node with this ID, which is added; nothing if it was before.
    std::optional<NodeNumber> addNewNode(std::string_view id);
    /// The default is the ID.
    void setName(NodeNumber node, std::string_view name);
    /// The default is `file`.
    void setType(NodeNumber node, std::string_view type);
    void setProperty(NodeNumber node, std::string_view key, std::string_view value);
    /// A preferred ID, used if it is unique in both files. Add the best one first.
    void addIdCandidate(NodeNumber node, std::string_view id);

    /// Returns: the edge's number.
    std::size_t addEdge(std::string_view upstreamID, std::string_view downstreamID);
    /// The default type is `depends`; component names and types are empty by default.
    ///
    /// Requires: `column` is neither of the ends.
    void set(std::size_t edge, EdgeColumn column, std::string_view text);

    /// The key `timestamp` is also the time of the analysis.
    void setGraphProperty(std::string_view key, std::string_view value);

    /// Declares a property of the graph that changes with every build, though nothing else does.
    void declareBuildProperty(std::string_view key) { draft_.buildKeys.push_back(intern(key)); }

    /// Values for nodes, edges and a graph that have none of their own.
    void setDefaultName(std::string_view name) { defaultName_ = name; }
    void setDefaultType(std::string_view type) { defaultType_ = type; }
    void setDefaultProperty(std::string_view key, std::string_view value);
    void setDefault(EdgeColumn column, std::string_view text);
    void setDefaultGraphProperty(std::string_view key, std::string_view value);

    /// Makes nodes of ends of edges that are never added, with a warning.
    void addMissingEnds() { addsMissingEnds_ = true; }
    /// Makes one edge of those that are equal in everything, for formats that repeat parts of trees.
    void foldEqualEdges() { foldsEqualEdges_ = true; }

    void warn(std::string warning) { draft_.warnings.push_back(std::move(warning)); }
    /// Warns of names, if there are any, of parts that were passed over; `what` they are: "elements".
    void warnOfUnknown(std::string_view what, const QuotedNames& names);

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
        tsl::robin_map<std::string_view, std::uint32_t, SeededHash, std::equal_to<>,
                       std::allocator<std::pair<std::string_view, std::uint32_t>>,
                       true /* keep the hashes */>;

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
    bool foldsEqualEdges_ = false;
};

}  // namespace depcompare
