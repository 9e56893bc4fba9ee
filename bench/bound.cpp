#include "bound.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>

#include "flat_index.h"

namespace depcompare::bench {

namespace {

using dependency::graph::Dependency;
using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;
using Graphs = std::array<const std::shared_ptr<const Graph>*, 2>;

constexpr std::uint32_t none = 0xffffffff;

std::uint64_t mixed(std::uint64_t bits) {
    bits *= 0x9e3779b97f4a7c15U;
    return bits ^ (bits << 32U);
}

std::uint64_t addressHash(const Node* node) {
    return mixed(reinterpret_cast<std::uintptr_t>(node));
}

// The nodes of both sides under one numbering, those with one ID under one number.
class Numbering {
  public:
    explicit Numbering(const Graphs& graphs) {
        for (std::size_t side = 0; side < graphs.size(); ++side) {
            for (const std::shared_ptr<Node>& node : (*graphs[side])->getNodes()) {
                add(side, *node);
            }
        }
    }

    [[nodiscard]] std::size_t size() const { return nodes_.size(); }
    [[nodiscard]] const Node* node(std::size_t side, std::uint32_t number) const {
        return nodes_[number][side];
    }
    [[nodiscard]] bool isFile(std::size_t side, std::uint32_t number) const {
        return isFile_[number][side];
    }

    [[nodiscard]] std::uint32_t numberOf(std::size_t side, const Node* node) const {
        return byAddress_[side].find(
            addressHash(node), [&](std::uint32_t number) { return nodes_[number][side] == node; });
    }

  private:
    void add(std::size_t side, const Node& node) {
        const std::u16string_view id = node.getID();
        const auto fresh = static_cast<std::uint32_t>(nodes_.size());
        const std::uint32_t number = byID_.findOrAdd(
            std::hash<std::u16string_view>{}(id), fresh, [&](std::uint32_t candidate) {
                const auto& known = nodes_[candidate];
                return (known[0] != nullptr ? known[0] : known[1])->getID() == id;
            });
        if (number == fresh) {
            nodes_.emplace_back();
            isFile_.emplace_back();
        }
        nodes_[number][side] = &node;
        isFile_[number][side] = *node.getType() == *Type::FILE();
        byAddress_[side].findOrAdd(addressHash(&node), number, [](std::uint32_t) { return false; });
    }

    FlatIndex byID_;
    std::array<FlatIndex, 2> byAddress_;
    std::vector<std::array<const Node*, 2>> nodes_;
    std::vector<std::array<bool, 2>> isFile_;
};

// The dependencies of a group and side form a list through `Member::next`.
struct Member {
    const Dependency* dependency;
    std::uint32_t next;
};

struct Group {
    std::uint32_t upstream;
    std::uint32_t downstream;
    std::array<std::uint32_t, 2> last{none, none};
    std::array<std::uint32_t, 2> size{};
};

class Groups {
  public:
    Groups(const Graphs& graphs, const Numbering& numbering) : numbering_(numbering) {
        for (std::size_t side = 0; side < graphs.size(); ++side) {
            const Graph& graph = **graphs[side];
            for (const std::shared_ptr<Node>& node : graph.getNodes()) {
                const std::uint32_t upstream = numbering.numberOf(side, node.get());
                if (!numbering.isFile(side, upstream)) {
                    continue;
                }
                for (const auto& dependency : graph.getDownstreamDependencies(node)) {
                    add(side, upstream, *dependency);
                }
            }
        }
    }

    [[nodiscard]] const std::vector<Group>& all() const { return groups_; }

    [[nodiscard]] bool differs(const Group& group) {
        return group.size[0] != group.size[1] || nodesDiffer(group.upstream) ||
               nodesDiffer(group.downstream) || membersDiffer(group);
    }

  private:
    void add(std::size_t side, std::uint32_t upstream, const Dependency& dependency) {
        const std::uint32_t downstream =
            numbering_.numberOf(side, dependency.getDownstreamNode().get());
        const auto fresh = static_cast<std::uint32_t>(groups_.size());
        const std::uint32_t number = byEnds_.findOrAdd(
            mixed((std::uint64_t{upstream} << 32U) | downstream), fresh, [&](std::uint32_t at) {
                return groups_[at].upstream == upstream && groups_[at].downstream == downstream;
            });
        if (number == fresh) {
            groups_.push_back({.upstream = upstream, .downstream = downstream});
        }
        Group& group = groups_[number];
        members_.push_back({.dependency = &dependency, .next = group.last[side]});
        group.last[side] = static_cast<std::uint32_t>(members_.size() - 1);
        ++group.size[side];
    }

    [[nodiscard]] bool nodesDiffer(std::uint32_t number) const {
        return !(*numbering_.node(0, number) == *numbering_.node(1, number));
    }

    [[nodiscard]] bool membersDiffer(const Group& group) {
        for (std::size_t side = 0; side < scratch_.size(); ++side) {
            std::vector<const Dependency*>& members = scratch_[side];
            members.clear();
            for (std::uint32_t at = group.last[side]; at != none; at = members_[at].next) {
                members.push_back(members_[at].dependency);
            }
            std::ranges::sort(members, {}, &Dependency::getID);
        }
        return !std::ranges::equal(
            scratch_[0], scratch_[1],
            [](const Dependency* a, const Dependency* b) { return *a == *b; });
    }

    const Numbering& numbering_;
    FlatIndex byEnds_;
    std::vector<Group> groups_;
    std::vector<Member> members_;
    std::array<std::vector<const Dependency*>, 2> scratch_;
};

void count(PairCounts& counts, bool left, bool right, bool changed) {
    ++(left && right ? counts.common : left ? counts.removed : counts.added);
    counts.changed += changed ? 1 : 0;
}

}  // namespace

BoundResult pairAtTheBound(const std::shared_ptr<const Graph>& left,
                           const std::shared_ptr<const Graph>& right) {
    const Graphs graphs{&left, &right};
    Numbering numbering(graphs);
    Groups groups(graphs, numbering);

    BoundResult result;
    result.items.reserve(numbering.size() + groups.all().size());
    for (std::uint32_t number = 0; number < numbering.size(); ++number) {
        BoundItem file;
        for (std::size_t side = 0; side < graphs.size(); ++side) {
            file.upstream[side] =
                numbering.isFile(side, number) ? numbering.node(side, number) : nullptr;
        }
        if (file.upstream[0] != nullptr || file.upstream[1] != nullptr) {
            count(result.counts.files, file.upstream[0] != nullptr, file.upstream[1] != nullptr,
                  false);
            result.items.push_back(file);
        }
    }
    for (const Group& group : groups.all()) {
        BoundItem item;
        for (std::size_t side = 0; side < graphs.size(); ++side) {
            if (group.size[side] != 0) {
                item.upstream[side] = numbering.node(side, group.upstream);
                item.downstream[side] = numbering.node(side, group.downstream);
            }
        }
        const bool onBoth = group.size[0] != 0 && group.size[1] != 0;
        item.changed = onBoth && groups.differs(group);
        count(result.counts.groups, group.size[0] != 0, group.size[1] != 0, item.changed);
        result.items.push_back(item);
    }
    return result;
}

}  // namespace depcompare::bench
