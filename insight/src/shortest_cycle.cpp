#include "shortest_cycle.h"

#include <algorithm>

#include "components.h"

namespace dependency::insight {

ShortestCycle::ShortestCycle(const LinkGraph& graph, Side side, Strength strength,
                             const std::vector<Number>& groupOf)
    : graph_(graph),
      side_(side),
      strength_(strength),
      groupOf_(groupOf),
      part_(groupOf),
      isDone_(graph.nodeCount()),
      distance_(graph.nodeCount(), none),
      with_(graph.nodeCount(), none) {}

void ShortestCycle::Best::offer(Number newLength, Number node) {
    if (newLength < length) {
        *this = {.length = newLength, .smallest = node};
    } else if (newLength == length) {
        smallest = std::min(smallest, node);
    }
}

bool ShortestCycle::isInside(Number from, const LinkEnd& to) const {
    return to.state.on(side_, strength_) && groupOf_[from] == groupOf_[to.node];
}

bool ShortestCycle::isCandidate(const LinkState& state) const {
    return through_ == Through::anyLink || !state.on(otherSide(side_), strength_);
}

std::vector<Number> ShortestCycle::find(const std::vector<Number>& nodes, Through through) {
    through_ = through;
    std::vector<Number> sources = sourcesOf(nodes);
    Best best = shortOnes(sources);
    if (best.length == none) {
        std::size_t size = graph_.nodeCount();
        for (const Number node : nodes) {
            size += graph_.from(node).size();
        }
        work_ = 0;
        while (!sources.empty()) {
            const Number source = sources.back();
            sources.pop_back();
            search(source, best);
            isDone_[source] = true;
            if (work_ > 4 * size) {
                work_ = 0;
                forget(nodes, sources);
            }
        }
        for (const Number node : nodes) {
            isDone_[node] = false;
            part_[node] = groupOf_[node];
        }
    }
    return best.length == none ? std::vector<Number>() : cycleFrom(best);
}

// Returns: the nodes that a candidate link leaves.
std::vector<Number> ShortestCycle::sourcesOf(const std::vector<Number>& nodes) const {
    std::vector<Number> sources;
    std::ranges::copy_if(nodes, std::back_inserter(sources), [&](Number node) {
        return std::ranges::any_of(graph_.from(node), [&](const LinkEnd& end) {
            return isInside(node, end) && isCandidate(end.state);
        });
    });
    return sources;
}

// Cycles of one or two links take no search.
ShortestCycle::Best ShortestCycle::shortOnes(const std::vector<Number>& sources) const {
    Best best;
    for (const Number source : sources) {
        for (const LinkEnd& end : graph_.from(source)) {
            if (!isInside(source, end) || !isCandidate(end.state)) {
                continue;
            }
            if (end.node == source) {
                best.offer(1, source);
            } else if (const auto* back = graph_.find(Link{end.node, source});
                       back != nullptr && back->on(side_, strength_)) {
                best.offer(2, std::min(source, end.node));
            }
        }
    }
    return best;
}

// Offers the shortest cycles through a candidate link that leaves `source`, unless they are longer
// than the best.
void ShortestCycle::search(Number source, Best& best) {
    const auto meet = [&](Number node, Number distance) {
        if (distance_[node] == none) {
            distance_[node] = distance;
            met_.push_back(node);
        }
    };
    for (const LinkEnd& end : graph_.from(source)) {
        if (isInside(source, end) && part_[source] == part_[end.node] && isCandidate(end.state)) {
            meet(end.node, 1);
        }
    }
    for (std::size_t next = 0; next < met_.size() && distance_[source] == none; ++next) {
        const Number node = met_[next];
        const Number distance = distance_[node] + 1;
        if (distance > best.length) {
            break;
        }
        const auto ends = graph_.from(node);
        work_ += ends.size();
        for (const LinkEnd& end : ends) {
            if (isInside(node, end) && part_[node] == part_[end.node] &&
                !(isDone_[node] && isCandidate(end.state))) {
                meet(end.node, distance);
            }
        }
    }
    if (distance_[source] != none) {
        offerCyclesThrough(source, distance_[source], best);
    }
    clearDistances();
}

// Walks back from the source along falling distances.
void ShortestCycle::offerCyclesThrough(Number source, Number length, Best& best) {
    best.offer(length, source);
    std::vector<Number> walk{source};
    for (std::size_t next = 0; next < walk.size(); ++next) {
        const Number node = walk[next];
        const Number distance = next == 0 ? length : with_[node];
        if (distance == 1) {
            continue;
        }
        for (const LinkEnd& end : graph_.into(node)) {
            if (end.state.on(side_, strength_) && distance_[end.node] == distance - 1 &&
                groupOf_[end.node] == groupOf_[node] && with_[end.node] == none) {
                with_[end.node] = distance - 1;
                best.offer(length, end.node);
                walk.push_back(end.node);
            }
        }
    }
    work_ += walk.size();
}

// Parts the nodes anew by the links that are not done, and drops sources that are on no cycle.
void ShortestCycle::forget(const std::vector<Number>& nodes, std::vector<Number>& sources) {
    std::vector<std::pair<Number, Number>> links;
    const auto forEachLink = [&](Number node, auto&& visit) {
        for (const LinkEnd& end : graph_.from(node)) {
            if (isInside(node, end) && !(isDone_[node] && isCandidate(end.state))) {
                visit(end.node);
            }
        }
    };
    for (const Number node : nodes) {
        forEachLink(node, [&](Number end) { links.emplace_back(node, end); });
    }
    const Components components = findComponents(graph_.nodeCount(), links);
    for (const Number node : nodes) {
        part_[node] = components.of[node];
    }
    std::erase_if(sources, [&](Number source) {
        bool isOnCycle = false;
        forEachLink(source, [&](Number end) { isOnCycle |= part_[end] == part_[source]; });
        return !isOnCycle;
    });
}

// Every closed walk of the shortest length with a candidate link is a cycle, so it is enough to know
// how far each node is from the first one, with and without such a link on the way.
std::vector<Number> ShortestCycle::cycleFrom(Best best) {
    const Number first = best.smallest;
    struct State {
        Number node;
        bool isWith;
    };
    std::vector<State> queue{{first, false}};
    distance_[first] = 0;
    met_.push_back(first);
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const auto [node, isWith] = queue[next];
        const Number distance = (isWith ? with_ : distance_)[node] + 1;
        if (distance > best.length) {
            break;
        }
        for (const LinkEnd& end : graph_.into(node)) {
            if (!end.state.on(side_, strength_) || groupOf_[end.node] != groupOf_[node]) {
                continue;
            }
            const bool becomesWith = isWith || isCandidate(end.state);
            Number& known = (becomesWith ? with_ : distance_)[end.node];
            if (known == none) {
                known = distance;
                met_.push_back(end.node);
                queue.push_back({end.node, becomesWith});
            }
        }
    }
    std::vector<Number> cycle{first};
    bool isWith = false;
    while (cycle.size() < best.length) {
        const Number node = cycle.back();
        const auto left = best.length - static_cast<Number>(cycle.size());
        const auto ends = graph_.from(node);
        const auto step = std::ranges::find_if(ends, [&](const LinkEnd& end) {
            if (!isInside(node, end)) {
                return false;
            }
            const bool isEnough = isWith || isCandidate(end.state);
            return with_[end.node] <= left || (isEnough && distance_[end.node] <= left);
        });
        isWith |= isCandidate(step->state);
        cycle.push_back(step->node);
    }
    clearDistances();
    return cycle;
}

void ShortestCycle::clearDistances() {
    for (const Number node : met_) {
        distance_[node] = none;
        with_[node] = none;
    }
    met_.clear();
}

}  // namespace dependency::insight
