#include <dependency/insight/causes.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

namespace dependency::insight {

namespace {

class CauseFinder {
  public:
    CauseFinder(const LinkGraph& graph, std::span<const NodePair> renames)
        : graph_(graph), renamed_(graph.nodeCount(), none) {
        for (const auto& [left, right] : renames) {
            if (std::max(left, right) >= graph.nodeCount() || graph.edit(left) != Edit::removed ||
                graph.edit(right) != Edit::added || renamed_[left] != none ||
                renamed_[right] != none) {
                throw std::invalid_argument("a rename pairs two nodes that are on one side each");
            }
            renamed_[left] = right;
            renamed_[right] = left;
        }
    }

    Causes find() {
        targetFiles_.assign(graph_.nodeCount(), 0);
        for (Number upstream = 0; upstream < graph_.nodeCount(); ++upstream) {
            for (const LinkEnd& end : graph_.from(upstream)) {
                count(upstream, end);
            }
        }
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            if (targetFiles_[node] != 0) {
                causes_.targets.push_back(
                    {.node = node, .edit = graph_.edit(node), .files = targetFiles_[node]});
            }
        }
        std::ranges::stable_sort(causes_.targets, std::ranges::greater(), &Target::files);
        return std::move(causes_);
    }

  private:
    // A link counts on a side if it leaves a file there.
    [[nodiscard]] bool isOn(Side side, Number upstream, const LinkState& state) const {
        return state.on(side) && graph_.isFile(upstream, side);
    }

    void count(Number upstream, const LinkEnd& end) {
        const bool isLeft = isOn(Side::left, upstream, end.state);
        const bool isRight = isOn(Side::right, upstream, end.state);
        if (isLeft && isRight) {
            countChange(end.state.change());
        } else if (isLeft) {
            countLink(upstream, end.node, Side::left);
        } else if (isRight) {
            countLink(upstream, end.node, Side::right);
        }
    }

    void countChange(LinkChange change) {
        switch (change) {
            case LinkChange::nothing:
                break;
            case LinkChange::components:
                ++causes_.changed.components;
                break;
            case LinkChange::types:
                ++causes_.changed.types;
                break;
            case LinkChange::ends:
                ++causes_.changed.ends;
                break;
        }
    }

    void countLink(Number upstream, Number downstream, Side side) {
        const Side other = otherSide(side);
        LinkCauses& causes = side == Side::left ? causes_.removed : causes_.added;
        if (isRenamed(upstream, downstream, side)) {
            ++causes.rename;
        } else if (!graph_.isFile(upstream, other)) {
            ++causes.file;
        } else if (!graph_.has(downstream, other)) {
            ++causes.target;
            ++targetFiles_[downstream];
        } else {
            ++causes.rewiring;
            causes_.rewired.push_back({.link = {upstream, downstream},
                                       .edit = side == Side::left ? Edit::removed : Edit::added});
        }
    }

    // Returns: whether the link, with its ends renamed, is a link of the other side alone.
    [[nodiscard]] bool isRenamed(Number upstream, Number downstream, Side side) const {
        const Link link{counterpart(upstream), counterpart(downstream)};
        if (link == Link{upstream, downstream}) {
            return false;
        }
        const auto* const state = graph_.find(link);
        return state != nullptr && isOn(otherSide(side), link.upstream, *state) &&
               !isOn(side, link.upstream, *state);
    }

    [[nodiscard]] Number counterpart(Number node) const {
        return renamed_[node] == none ? node : renamed_[node];
    }

    const LinkGraph& graph_;
    std::vector<Number> renamed_;  // by node of either side; `none` for others
    std::vector<std::size_t> targetFiles_;
    Causes causes_;
};

}  // namespace

Causes findCauses(const LinkGraph& graph, std::span<const NodePair> renames) {
    return CauseFinder(graph, renames).find();
}

}  // namespace dependency::insight
