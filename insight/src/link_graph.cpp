#include <dependency/insight/link_graph.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace dependency::insight {

namespace {

using NodePointer = std::shared_ptr<const graph::Node>;

std::vector<NodePointer> nodesByID(const graph::Graph& graph) {
    std::vector<NodePointer> nodes;
    for (const auto& node : graph.getNodes()) {
        nodes.push_back(node);
    }
    const auto id = [](const NodePointer& node) -> const std::u16string& { return node->getID(); };
    if (!std::ranges::is_sorted(nodes, {}, id)) {
        std::ranges::sort(nodes, {}, id);
    }
    return nodes;
}

/// What a link has to know of the type of a dependency.
struct TypeRecord {
    Number number = 0;
    bool isSelected = true;
    bool isSoft = false;
};

class TypeRecords {
  public:
    explicit TypeRecords(const LinkOptions& options) : options_(options) {}

    const TypeRecord& operator()(std::shared_ptr<const graph::Type> type) {
        if (type != lastType_) {
            last_ = &recordOf(type->getID());
            lastType_ = std::move(type);
        }
        return *last_;
    }

  private:
    const TypeRecord& recordOf(const std::u16string& id) {
        const auto [found, added] = byID_.try_emplace(id);
        if (added) {
            found->second = {.number = static_cast<Number>(byID_.size()),
                             .isSelected = !options_.isSelected || options_.isSelected(id),
                             .isSoft = options_.isSoft && options_.isSoft(id)};
        }
        return found->second;
    }

    const LinkOptions& options_;
    std::map<std::u16string, TypeRecord> byID_;
    std::shared_ptr<const graph::Type> lastType_;
    const TypeRecord* last_ = nullptr;
};

/// A dependency on its way into a link.
struct Found {
    Number downstream = 0;
    Side side = Side::left;
    bool isSoft = false;
    Number type = 0;
    Number order = 0;  // among the dependencies that leave one node
    const graph::Dependency* dependency = nullptr;
};

// Returns: those of one side, in ID order, of several with one ID the first.
std::span<Found> inOrder(std::span<Found> dependencies) {
    if (dependencies.size() < 2) {
        return dependencies;
    }
    const auto id = [](const Found& found) -> const std::u16string& {
        return found.dependency->getID();
    };
    std::ranges::stable_sort(dependencies, {}, id);
    const auto end = std::unique(dependencies.begin(), dependencies.end(),
                                 [&](const Found& a, const Found& b) { return id(a) == id(b); });
    return {dependencies.begin(), end};
}

bool haveEqualTypes(std::span<const Found> a, std::span<const Found> b) {
    return std::ranges::is_permutation(a, b, {}, &Found::type, &Found::type);
}

LinkChange changeBetween(std::span<Found> left, std::span<Found> right, bool areEndsEqual) {
    left = inOrder(left);
    right = inOrder(right);
    // A permutation is sought in quadratic time: many dependencies are compared as counts.
    constexpr std::size_t few = 16;
    bool equalTypes = left.size() == right.size();
    if (equalTypes && left.size() <= few) {
        equalTypes = haveEqualTypes(left, right);
    } else if (equalTypes) {
        std::unordered_map<Number, std::ptrdiff_t> surplus;
        for (std::size_t i = 0; i < left.size(); ++i) {
            ++surplus[left[i].type];
            --surplus[right[i].type];
        }
        equalTypes =
            std::ranges::all_of(surplus, [](const auto& type) { return type.second == 0; });
    }
    if (!equalTypes) {
        return LinkChange::types;
    }
    const auto isEqual = [](const Found& a, const Found& b) {
        return *a.dependency == *b.dependency;
    };
    if (!std::ranges::equal(left, right, isEqual)) {
        return LinkChange::components;
    }
    return areEndsEqual ? LinkChange::nothing : LinkChange::ends;
}

}  // namespace

class LinkGraph::Builder {
  public:
    Builder(LinkGraph& result, const BySide<const graph::Graph*>& graphs,
            const LinkOptions& options)
        : result_(result), graphs_(graphs), displayedID_(options.displayedID), types_(options) {}

    void build() {
        numberNodes();
        result_.firstFrom_.reserve(result_.nodes_.size() + 1);
        for (Number node = 0; node < result_.nodes_.size(); ++node) {
            result_.firstFrom_.push_back(static_cast<Number>(result_.downstream_.size()));
            addLinksFrom(node);
            if (result_.downstream_.size() >= insight::none) {
                throw std::length_error("more links than can be numbered");
            }
        }
        result_.firstFrom_.push_back(static_cast<Number>(result_.downstream_.size()));
        result_.downstream_.shrink_to_fit();
        turnAround();
    }

  private:
    void numberNodes() {
        BySide<std::vector<NodePointer>> all;
        for (const Side side : sides) {
            all[side] = nodesByID(*graphs_[side]);
            numbers_[side].reserve(all[side].size());
        }
        if (all.left.size() + all.right.size() >= insight::none) {
            throw std::length_error("more nodes than can be numbered");
        }
        result_.nodes_.reserve(std::max(all.left.size(), all.right.size()));
        auto left = all.left.begin();
        auto right = all.right.begin();
        while (left != all.left.end() || right != all.right.end()) {
            const int order = left == all.left.end() ? 1
                              : right == all.right.end()
                                  ? -1
                                  : (*left)->getID().compare((*right)->getID());
            Entry entry;
            if (order <= 0) {
                entry.bySide.left = std::move(*left++);
            }
            if (order >= 0) {
                entry.bySide.right = std::move(*right++);
            }
            addNode(std::move(entry));
        }
    }

    void addNode(Entry entry) {
        const auto number = static_cast<Number>(result_.nodes_.size());
        for (const Side side : sides) {
            if (const auto& node = entry.bySide[side]) {
                entry.isFile[side] = *node->getType() == *graph::Type::FILE();
                entry.id = displayedID_ ? displayedID_(*node) : node->getID();
                numbers_[side].emplace(node.get(), number);
            }
        }
        const auto& [left, right] = entry.bySide;
        areEqual_.push_back(left && right && *left == *right);
        result_.nodes_.push_back(std::move(entry));
    }

    void addLinksFrom(Number node) {
        held_.clear();
        found_.clear();
        for (const Side side : sides) {
            if (const auto& upstream = result_.nodes_[node].bySide[side]) {
                find(upstream, side);
            }
        }
        std::ranges::sort(found_, {}, [](const Found& found) {
            return std::tuple(found.downstream, found.side, found.order);
        });
        for (std::span<Found> rest = found_; !rest.empty();) {
            const auto end = std::ranges::find_if(rest, [&](const Found& found) {
                return found.downstream != rest.front().downstream;
            });
            addLink(node, {rest.begin(), end});
            rest = {end, rest.end()};
        }
    }

    void find(const NodePointer& upstream, Side side) {
        // The graph model takes a pointer to a node that may be changed, and does not change it.
        const auto node = std::const_pointer_cast<graph::Node>(upstream);
        for (const auto& dependency : graphs_[side]->getDownstreamDependencies(node)) {
            const TypeRecord& type = types_(dependency->getType());
            if (!type.isSelected) {
                continue;
            }
            const auto downstream = numbers_[side].find(dependency->getDownstreamNode().get());
            if (downstream == numbers_[side].end()) {
                throw std::invalid_argument("a dependency leads to a node outside of its graph");
            }
            const auto order = static_cast<Number>(held_.size());
            held_.push_back(dependency);
            found_.push_back({.downstream = downstream->second,
                              .side = side,
                              .isSoft = type.isSoft,
                              .type = type.number,
                              .order = order,
                              .dependency = held_.back().get()});
        }
    }

    // Requires: the dependencies lead to one node, those of the left side first.
    void addLink(Number upstream, std::span<Found> dependencies) {
        const auto right = std::ranges::find(dependencies, Side::right, &Found::side);
        const BySide<std::span<Found>> bySide{{dependencies.begin(), right},
                                              {right, dependencies.end()}};
        LinkEnd link{.node = dependencies.front().downstream, .state = {}};
        for (const Side side : sides) {
            for (const Found& found : bySide[side]) {
                link.state.put(side, Strength::all);
                if (!found.isSoft) {
                    link.state.put(side, Strength::hard);
                }
            }
        }
        if (!bySide.left.empty() && !bySide.right.empty()) {
            link.state.put(changeBetween(bySide.left, bySide.right,
                                         areEqual_[upstream] && areEqual_[link.node]));
        }
        result_.downstream_.push_back(link);
    }

    // Fills the links by downstream node from those by upstream node.
    void turnAround() {
        auto& first = result_.firstInto_;
        first.assign(result_.nodes_.size() + 1, 0);
        for (const LinkEnd& end : result_.downstream_) {
            ++first[end.node + std::size_t{1}];
        }
        for (std::size_t node = 1; node < first.size(); ++node) {
            first[node] += first[node - 1];
        }
        result_.upstream_.resize(result_.downstream_.size());
        auto next = first;
        for (Number node = 0; node < result_.nodes_.size(); ++node) {
            for (const LinkEnd& end : result_.from(node)) {
                result_.upstream_[next[end.node]++] = {.node = node, .state = end.state};
            }
        }
    }

    using Numbers = std::unordered_map<const graph::Node*, Number>;

    LinkGraph& result_;
    BySide<const graph::Graph*> graphs_;
    const std::function<std::u16string_view(const graph::Node&)>& displayedID_;
    TypeRecords types_;
    BySide<Numbers> numbers_;
    std::vector<bool> areEqual_;  // by node; false if a side lacks it
    std::vector<std::shared_ptr<const graph::Dependency>> held_;  // those of one node
    std::vector<Found> found_;
};

LinkGraph::LinkGraph(const std::shared_ptr<const graph::Graph>& left,
                     const std::shared_ptr<const graph::Graph>& right, const LinkOptions& options) {
    Builder(*this, {left.get(), right.get()}, options).build();
}

std::optional<Number> LinkGraph::find(std::u16string_view id) const {
    const auto found = std::ranges::lower_bound(nodes_, id, {}, &Entry::id);
    if (found == nodes_.end() || found->id != id) {
        return std::nullopt;
    }
    return static_cast<Number>(found - nodes_.begin());
}

const LinkState* LinkGraph::find(Link link) const {
    const auto ends = from(link.upstream);
    const auto found = std::ranges::lower_bound(ends, link.downstream, {}, &LinkEnd::node);
    return found == ends.end() || found->node != link.downstream ? nullptr : &found->state;
}

}  // namespace dependency::insight
