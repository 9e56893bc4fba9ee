#pragma once
// A shortest cycle through one of several links.
#include <cstddef>
#include <utility>
#include <vector>

#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// Finds shortest cycles of one side, one family of cycle groups after the other.
///
/// Boost.Graph has no search for a shortest directed cycle.
class ShortestCycle {
  public:
    /// Requires: `groupOf` holds the cycle group of each node, `none` for others.
    /// Lifetime: as long as `graph` and `groupOf`.
    ShortestCycle(const LinkGraph& graph, Side side, Strength strength,
                  const std::vector<Number>& groupOf);

    enum class Through : std::uint8_t { anyLink, linksOfThisSideOnly };

    /// Requires: `nodes` are all nodes of some cycle groups, ascending.
    /// Returns: the nodes of a shortest cycle through a candidate link between them, from its
    ///          smallest on; of several the smallest sequence; empty if there is none.
    /// Complexity: a search per node that a candidate link leaves, no deeper than the shortest
    ///          cycle known. Links are left out once their cycles are known, and so is, now and
    ///          then, whatever is on no cycle any more.
    [[nodiscard]] std::vector<Number> find(const std::vector<Number>& nodes, Through through);

  private:
    struct Best {
        Number length = none;
        Number smallest = none;  // of all nodes on such a cycle
        void offer(Number length, Number node);
    };

    [[nodiscard]] bool isInside(Number from, const LinkEnd& to) const;
    [[nodiscard]] bool isCandidate(const LinkState& state) const;
    [[nodiscard]] std::vector<Number> sourcesOf(const std::vector<Number>& nodes) const;
    [[nodiscard]] Best shortOnes(const std::vector<Number>& sources) const;
    void search(Number source, Best& best);
    void offerCyclesThrough(Number source, Number length, Best& best);
    void forget(const std::vector<Number>& nodes, std::vector<Number>& sources);
    [[nodiscard]] std::vector<Number> cycleFrom(Best best);
    void clearDistances();

    const LinkGraph& graph_;
    Side side_;
    Strength strength_;
    Through through_ = Through::anyLink;
    const std::vector<Number>& groupOf_;
    std::vector<Number> part_;      // by node: what may be on a cycle with it has the same number
    std::vector<bool> isDone_;      // by node: all cycles through its candidate links are known
    std::vector<Number> distance_;  // by node, `none` where not met
    std::vector<Number> with_;      // the same for paths with a candidate link
    std::vector<Number> met_;       // the nodes with a distance
    std::size_t work_ = 0;
};

}  // namespace dependency::insight
