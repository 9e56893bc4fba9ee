#pragma once
// Shortest paths on one side; of several the smallest sequence of nodes.
#include <algorithm>
#include <vector>

#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// Boost's search needs a map of all nodes cleared for each start, and does not end early.
class BreadthFirst {
  public:
    /// Lifetime: as long as the graph.
    BreadthFirst(const LinkGraph& graph, Side side)
        : graph_(graph), side_(side), previous_(graph.nodeCount(), none) {}

    /// Returns: a shortest path of one link or more from `start` to a node that `isGoal`, both
    ///          included; empty if there is none.
    template <class IsGoal>
    [[nodiscard]] std::vector<Number> pathToFirst(Number start, IsGoal isGoal) {
        // Nodes are met in the order of the sequences that lead to them, since links are sorted.
        queue_ = {start};
        std::vector<Number> path;
        for (std::size_t next = 0; next < queue_.size() && path.empty(); ++next) {
            const Number node = queue_[next];
            for (const LinkEnd& end : graph_.from(node)) {
                if (!end.state.on(side_)) {
                    continue;
                }
                if (isGoal(end.node)) {
                    path = pathTo(node, start);
                    path.push_back(end.node);
                    break;
                }
                if (previous_[end.node] == none && end.node != start) {
                    previous_[end.node] = node;
                    queue_.push_back(end.node);
                }
            }
        }
        for (const Number node : queue_) {
            previous_[node] = none;
        }
        return path;
    }

  private:
    [[nodiscard]] std::vector<Number> pathTo(Number node, Number start) const {
        std::vector<Number> path;
        for (; node != start; node = previous_[node]) {
            path.push_back(node);
        }
        path.push_back(start);
        std::ranges::reverse(path);
        return path;
    }

    const LinkGraph& graph_;
    Side side_;
    std::vector<Number> previous_;  // by node met, but for the start
    std::vector<Number> queue_;
};

}  // namespace dependency::insight
