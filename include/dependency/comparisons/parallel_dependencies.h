#pragma once
// All dependencies that run from one node to one other node.
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <boost/functional/hash.hpp>

#include <dependency/comparisons/export.h>
#include <dependency/graph/compare_by_id.h>
#include <dependency/graph/graph.h>

namespace dependency::comparisons {

/// A group of parallel dependencies. It shares nodes and dependencies with their graph.
struct DEPENDENCY_COMPARISONS_EXPORT ParallelDependencies {
    using Dependencies = std::set<std::shared_ptr<graph::Dependency>, graph::CompareByID>;

    std::shared_ptr<graph::Node> upstream;
    std::shared_ptr<graph::Node> downstream;
    Dependencies dependencies;  ///< all from `upstream` to `downstream`
    std::u16string id;          ///< the upstream node's ID followed by the downstream node's

    ParallelDependencies() = default;

    /// Requires: both nodes non-null.
    ParallelDependencies(const std::shared_ptr<graph::Node>& upstreamNode,
                         const std::shared_ptr<graph::Node>& downstreamNode,
                         const Dependencies& group);

    /// Returns: one record per downstream node of the dependencies that leave `upstream`.
    /// Requires: both non-null.
    /// Order:   none; sort by `operator<`.
    /// Complexity: linear in the dependencies, plus the insertions into their sets.
    [[nodiscard]] static std::vector<ParallelDependencies> createParallelDependencies(
        const std::shared_ptr<const graph::Graph>& graph,
        const std::shared_ptr<graph::Node>& upstream);
};

namespace detail {

/// Returns: true for the same two node objects and the same dependency objects; records of two
///          graphs are never equal. The ID takes no part.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool equalImpl(const ParallelDependencies& a,
                                                           const ParallelDependencies& b);

/// Requires: both downstream nodes non-null.
/// Order:    by the downstream node's type ID, then by its name lower-cased under the global
///           locale; both by code unit. Nothing else takes part.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool lessThanImpl(const ParallelDependencies& a,
                                                              const ParallelDependencies& b);

}  // namespace detail

[[nodiscard]] inline bool operator==(const ParallelDependencies& a, const ParallelDependencies& b) {
    return detail::equalImpl(a, b);
}

[[nodiscard]] inline bool operator<(const ParallelDependencies& a, const ParallelDependencies& b) {
    return detail::lessThanImpl(a, b);
}

}  // namespace dependency::comparisons

/// Hashes the two nodes' addresses; the dependencies take no part.
template <>
struct std::hash<dependency::comparisons::ParallelDependencies> {
    std::size_t operator()(
        const dependency::comparisons::ParallelDependencies& group) const noexcept {
        std::size_t seed = 0;
        boost::hash_combine(seed, group.upstream.get());
        boost::hash_combine(seed, group.downstream.get());
        return seed;
    }
};
