#pragma once
// Leaves out of two graphs what the command line does not want compared, and counts it.
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "draft/graph_draft.h"

namespace depcompare {

/// Globs are those of `glob.h`.
struct Selection {
    std::vector<std::string> only = {};               ///< IDs of nodes; all, if there are none
    std::vector<std::string> exclude = {};            ///< IDs of nodes
    std::vector<std::string> ignoredProperties = {};  ///< keys, of nodes and of the graph
    std::vector<std::string> ignoredComponents = {};  ///< names
    bool keepsBuildData = false;  ///< properties of the graph that change with every build
};

/// What was left out of one graph.
struct LeftOut {
    std::size_t nodes = 0;
    std::size_t dependencies = 0;
    std::size_t properties = 0;       ///< because their keys are ignored
    std::size_t buildProperties = 0;  ///< because they change with every build
    std::size_t components = 0;       ///< ends of dependencies whose component has no name now
};

/// A node that is left out takes all its dependencies with it. What a selected node of either graph
/// depends on stays in both, without dependencies of its own: else it would seem to come or go.
///
/// Requires: the nodes have the IDs by which they are compared.
/// Returns:  left, right.
/// Throws:   `InputError` if no node of either graph is selected.
std::array<LeftOut, 2> leaveOut(std::array<GraphDraft, 2>& drafts, const Selection& selection);

}  // namespace depcompare
