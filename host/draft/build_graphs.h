#pragma once
// Builds two graphs that can be compared from the drafts of two files.
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <boost/date_time/posix_time/ptime.hpp>

#include <dependency/graph/graph.h>

#include "draft/graph_draft.h"
#include "draft/leave_out.h"
#include "draft/read_options.h"

namespace depcompare {

/// The IDs of a node of the left file and of one of the right file, as the files have them.
struct NodeIDs {
    std::u16string left;
    std::u16string right;
};

/// A graph, and facts about the file that it came from.
struct LoadedGraph {
    std::shared_ptr<const dependency::graph::Graph> graph;
    std::string source;
    std::size_t nodes = 0;
    std::size_t files = 0;
    std::size_t dependencies = 0;
    std::size_t nodesRead = 0;         ///< those of the file, whatever was left out
    std::size_t dependenciesRead = 0;  ///< the same
    LeftOut leftOut = {};
    boost::posix_time::ptime analysisTime;
    std::vector<std::string> warnings;
    std::size_t alarms = 0;                ///< how many of them, the first ones, nothing may hide
    std::vector<std::string> softTypes;    ///< patterns, as in `GraphDraft`
    std::vector<std::string> tellingKeys;  ///< as the input's format declares them
    /// Which IDs nodes have in the file, by the others that they were given instead.
    std::map<std::u16string, std::u16string, std::less<>> oldIDs = {};
};

/// Says which nodes of the left graph, which the right one lacks, take IDs of the right graph, which
/// the left one lacks; none occurs twice.
using ChooseRenames = std::function<std::vector<NodeIDs>(const std::array<LoadedGraph, 2>&)>;

/// Builds graphs that depend on the content of the files, not on its order: nodes are in the order of
/// their IDs, property keys ascend, and the ID of a dependency is its rank by the columns of
/// `EdgeColumn`. Adds warnings about what looks odd.
///
/// With `chooseRenames` the left graph is built once more if it names nodes. A node whose name is its
/// ID has the new one as its name, too.
///
/// Returns: left, right; each with marked node IDs (see `marked_id.h`).
/// Throws:  `InputError` if a side has nodes but not one with the property that tells them apart,
///          for two nodes that would have one ID, if the options leave no node, and, if they require
///          files, for nodes without a file.
[[nodiscard]] std::array<LoadedGraph, 2> buildGraphs(std::array<GraphDraft, 2> drafts,
                                                     const ReadOptions& options = {},
                                                     const ChooseRenames& chooseRenames = {});

}  // namespace depcompare
