#pragma once
// One analysis result: nodes, the dependencies between them, and string properties.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/range/any_range.hpp>

#include <dependency/graph/dependency.h>
#include <dependency/graph/node.h>

namespace dependency::graph {

using NodeRange = boost::any_range<const std::shared_ptr<Node>, boost::forward_traversal_tag>;
using DependencyRange =
    boost::any_range<const std::shared_ptr<Dependency>, boost::forward_traversal_tag>;

/// An immutable dependency graph. Made by `GraphBuilder::finish`.
///
/// Threads: any number may read.
class DEPENDENCY_GRAPH_EXPORT Graph {
  public:
    ~Graph();
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    /// Order: as added to the builder.
    /// Lifetime: the range is valid as long as the graph.
    [[nodiscard]] NodeRange getNodes() const;

    /// The dependencies whose upstream node is `upstream`.
    ///
    /// Requires: `upstream` non-null; a node of another graph has none here.
    /// Order: as added to the builder.
    /// Lifetime: the range is valid as long as the graph.
    /// Complexity: constant.
    [[nodiscard]] DependencyRange getDownstreamDependencies(
        const std::shared_ptr<Node>& upstream) const;

    /// Order: as given to the builder; no key occurs twice.
    [[nodiscard]] std::vector<std::u16string> getPropertyKeys() const;

    /// Throws: `std::out_of_range` for a key that `getPropertyKeys` does not list.
    /// Complexity: logarithmic in the number of properties.
    [[nodiscard]] std::u16string getProperty(const std::u16string& key) const;

  private:
    friend class GraphBuilder;
    friend DEPENDENCY_GRAPH_EXPORT boost::posix_time::ptime getTimeStamp(const Graph& graph);

    Graph();

    std::vector<std::shared_ptr<Node>> nodes_;
    std::vector<std::shared_ptr<Dependency>> dependencies_;  // those of one upstream node together
    std::vector<std::size_t> firstDependency_;               // by node index, and one past the last
    std::vector<Property> properties_;
    std::vector<std::uint32_t> keyOrder_;  // of the properties, unless they are in that order
    boost::posix_time::ptime timeStamp_;
};

/// The time of the analysis.
///
/// Returns: `not_a_date_time` if the builder was given none.
[[nodiscard]] DEPENDENCY_GRAPH_EXPORT boost::posix_time::ptime getTimeStamp(const Graph& graph);

}  // namespace dependency::graph
