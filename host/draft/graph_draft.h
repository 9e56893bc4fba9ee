#pragma once
// The content of a file, before anything is decided that needs both files of a comparison.
//
// Text is UTF-8. Whatever repeats is stored once: types, keys and component names are numbers of
// texts, the ends of edges are numbers of nodes.
#include <array>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include <boost/date_time/posix_time/ptime.hpp>

namespace depcompare {

using TextNumber = std::uint32_t;
using NodeNumber = std::uint32_t;

/// Owns texts, whose addresses survive a move of the store; copies own the same ones.
class TextStore {
  public:
    /// Lifetime: the result is valid as long as the store.
    [[nodiscard]] std::string_view keep(std::string_view text);

  private:
    std::shared_ptr<std::pmr::monotonic_buffer_resource> memory_ =
        std::make_shared<std::pmr::monotonic_buffer_resource>();
};

/// The columns by which edges are ordered, most significant first.
enum class EdgeColumn : std::uint8_t {
    type,
    upstream,
    downstream,
    upstreamComponent,
    downstreamComponent,
    upstreamComponentType,
    downstreamComponentType,
};
inline constexpr std::size_t edgeColumns = 7;

/// By column: the number of a node for the two ends, else of a text.
using EdgeDraft = std::array<std::uint32_t, edgeColumns>;

[[nodiscard]] constexpr std::uint32_t& at(EdgeDraft& edge, EdgeColumn column) {
    return edge[static_cast<std::size_t>(column)];
}
[[nodiscard]] constexpr std::uint32_t at(const EdgeDraft& edge, EdgeColumn column) {
    return edge[static_cast<std::size_t>(column)];
}

struct PropertyDraft {
    TextNumber key = 0;
    std::string_view value;
};

struct NodeDraft {
    std::string_view id;
    std::string_view name;
    TextNumber type = 0;
};

struct NodePropertyDraft {
    NodeNumber node = 0;
    PropertyDraft property;
};

struct IdCandidate {
    NodeNumber node = 0;
    std::string_view id;
};

struct GraphDraft {
    std::string source;
    TextStore store;
    std::vector<std::string_view> texts;  ///< all different
    std::vector<NodeDraft> nodes;
    std::vector<NodePropertyDraft> nodeProperties;  ///< in any order; a later value of a key holds
    std::vector<PropertyDraft> nodeDefaults;        ///< for nodes that lack the key
    std::vector<PropertyDraft> graphProperties;     ///< a later value of a key holds
    std::vector<TextNumber> buildKeys;  ///< of graph properties that change with every build
    std::vector<EdgeDraft> edges;
    /// Preferred IDs of nodes, used if they are unique in both files of a comparison; of one node's,
    /// the best first.
    std::vector<IdCandidate> idCandidates;
    /// Types of dependencies (patterns of the shell) that are needed in development only, optional,
    /// or no more than remarks on others.
    std::vector<std::string> softTypes;
    std::vector<std::string> warnings;
    std::vector<std::string> alarms;        ///< warnings that nothing may hide
    boost::posix_time::ptime analysisTime;  ///< in UTC; not a time if the file names none

    /// Returns: the number of a text, which the draft stores from now on.
    [[nodiscard]] TextNumber textNumber(std::string_view text);
};

}  // namespace depcompare
