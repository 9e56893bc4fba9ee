#pragma once
// A graph as a DOT file describes it, before anything in it has a meaning.
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "draft/graph_draft.h"
#include "input/input.h"

namespace depcompare {

struct DotAttribute {
    std::string_view name;
    std::string_view value;
    bool isHtml = false;

    friend bool operator==(const DotAttribute&, const DotAttribute&) = default;
};

/// What `node` or `edge` statements say, for whatever is created after them: as from `attributesOf`.
struct DotDefaults {
    std::vector<DotAttribute> attributes;
    std::uint64_t bytes = 0;          ///< roughly, in memory
    std::uint64_t propertyBytes = 0;  ///< those that each node gets as properties
};

/// What nodes and edges have in common.
struct DotObject {
    const DotDefaults* defaults = nullptr;
    std::vector<DotAttribute> own;  ///< in the order of the file; the last of a name holds
};

struct DotNode : DotObject {
    std::string_view id;
};

/// The first word of a port is the value of `tailport` or `headport`.
struct DotEdge : DotObject {
    NodeNumber tail = 0;
    NodeNumber head = 0;
};

struct DotSubgraph {
    enum Kind : std::uint8_t { nodes, edges };

    std::array<const DotDefaults*, 2> defaults{};  ///< by kind; those of the outer graphs included
    std::array<std::vector<DotAttribute>, 2> own;  ///< defaults, by kind
    std::vector<NodeNumber> mentioned;             ///< any number of times
    std::vector<std::size_t> inner;
};

/// Texts are valid as long as the graph, or the one that it is moved to.
struct DotGraph {
    std::uint64_t fileBytes = 0;
    TextStore texts;
    std::string_view name;
    bool isStrict = false;
    bool isDirected = false;
    std::vector<DotAttribute> attributes;  ///< in the order of the file; the last of a name holds
    std::vector<DotNode> nodes;            ///< in the order in which the file mentions them
    std::vector<DotEdge> edges;
    std::vector<DotSubgraph> subgraphs;  ///< the first one is the graph itself
    std::map<std::pair<std::size_t, std::string_view>, std::size_t>
        namedSubgraphs;                ///< by the outer one
    std::deque<DotDefaults> defaults;  ///< all that ever held

    /// Returns: the nodes that the subgraph or one in it mentions, ascending. `lookedAt` grows by the
    ///          number of what was looked at.
    [[nodiscard]] std::vector<NodeNumber> nodesIn(std::size_t subgraph,
                                                  std::uint64_t& lookedAt) const;
};

/// Keeps the last attribute of each name.
///
/// Order: by name.
void keepLast(std::vector<DotAttribute>& attributes);

/// Returns: those that hold and are not empty.
///
/// Order: by name.
[[nodiscard]] std::vector<DotAttribute> attributesOf(const DotObject& object);

/// Returns: the attribute that holds; one without a value if there is none.
[[nodiscard]] DotAttribute attributeOf(const DotObject& object, std::string_view name);

/// Returns: how many bytes a file of this size may make by stating once what holds for many.
[[nodiscard]] std::uint64_t mostRepeated(std::uint64_t fileBytes);

/// Throws: `InputError` for what is not DOT, no or several graphs in the file, what is beyond the
///         limits, and a file that makes far more edges or attributes than its size explains.
/// Complexity: n log n, in the size of the file.
[[nodiscard]] DotGraph parseDOT(Input& input);

}  // namespace depcompare
