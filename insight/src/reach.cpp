// Sets of reached nodes are made over strongly connected components, whose nodes reach the same, for
// a block of nodes at a time: a row of bits per component, in an order in which the rows that a row
// is made of come first. Boost.Graph's transitive closure keeps all rows at once.
#include <dependency/insight/reach.h>

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <span>
#include <utility>

#include "breadth_first.h"
#include "components.h"

namespace dependency::insight {

namespace {

constexpr std::size_t rowWords = 8;  // a line of the cache
constexpr std::size_t blockSize = 64 * rowWords;
using Row = std::array<std::uint64_t, rowWords>;

Number countBits(const Row& row) {
    return std::accumulate(row.begin(), row.end(), Number{0}, [](Number sum, std::uint64_t word) {
        return sum + static_cast<Number>(std::popcount(word));
    });
}

Number countOnlyInFirst(const Row& a, const Row& b) {
    Number count = 0;
    for (std::size_t i = 0; i < rowWords; ++i) {
        count += static_cast<Number>(std::popcount(a[i] & ~b[i]));
    }
    return count;
}

/// The components of one side, and the links between different ones, none twice.
struct Condensation {
    std::vector<Number> of;     // by node
    std::vector<Number> first;  // by component, and one past the last
    std::vector<Number> ends;   // components with smaller numbers

    Condensation(const LinkGraph& graph, Side side) {
        Components components = findComponents(graph, side, Strength::all);
        of = std::move(components.of);
        std::vector<Number> firstNode(components.count + std::size_t{1});
        for (const Number component : of) {
            ++firstNode[component + std::size_t{1}];
        }
        std::partial_sum(firstNode.begin(), firstNode.end(), firstNode.begin());
        std::vector<Number> nodes(of.size());
        auto next = firstNode;
        for (Number node = 0; node < of.size(); ++node) {
            nodes[next[of[node]]++] = node;
        }
        std::vector<Number> lastUse(components.count, none);
        first.reserve(firstNode.size());
        for (Number component = 0; component < components.count; ++component) {
            first.push_back(static_cast<Number>(ends.size()));
            lastUse[component] = component;
            for (Number i = firstNode[component]; i < firstNode[component + 1]; ++i) {
                for (const LinkEnd& end : graph.from(nodes[i])) {
                    if (end.state.on(side) && lastUse[of[end.node]] != component) {
                        lastUse[of[end.node]] = component;
                        ends.push_back(of[end.node]);
                    }
                }
            }
        }
        first.push_back(static_cast<Number>(ends.size()));
    }

    [[nodiscard]] Number count() const { return static_cast<Number>(first.size() - 1); }
    [[nodiscard]] std::span<const Number> from(Number component) const {
        return std::span(ends).subspan(first[component], first[component + 1] - first[component]);
    }
    [[nodiscard]] std::uint64_t rowWork() const { return rowWords * (ends.size() + first.size()); }
};

/// Rows of the nodes of a block that each component reaches, those of its own included.
class ForwardRows {
  public:
    explicit ForwardRows(const Condensation& condensation)
        : condensation_(condensation), rows_(condensation.count()) {}

    // Requires: `hasNode` tells which nodes the side has.
    template <class HasNode>
    void fill(Number firstNode, Number lastNode, HasNode hasNode) {
        std::ranges::fill(rows_, Row{});
        for (Number node = firstNode; node < lastNode; ++node) {
            if (hasNode(node)) {
                put(condensation_.of[node], node - firstNode);
            }
        }
        for (Number component = 0; component < condensation_.count(); ++component) {
            Row& row = rows_[component];
            for (const Number end : condensation_.from(component)) {
                for (std::size_t i = 0; i < rowWords; ++i) {
                    row[i] |= rows_[end][i];
                }
            }
        }
    }

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    [[nodiscard]] const Row& operator[](Number component) const { return rows_[component]; }

  private:
    void put(Number component, Number bit) {
        rows_[component][bit / 64] |= std::uint64_t{1} << (bit % 64);
    }

    const Condensation& condensation_;
    std::vector<Row> rows_;
};

/// How many nodes that `counts` each component is reached by, its own included.
template <class Counts>
std::vector<Number> countAncestors(const Condensation& condensation, Number nodeCount,
                                   Counts counts) {
    std::vector<Number> nodes;
    for (Number node = 0; node < nodeCount; ++node) {
        if (counts(node)) {
            nodes.push_back(node);
        }
    }
    std::vector<Number> ancestors(condensation.count());
    std::vector<Row> rows(condensation.count());
    for (std::size_t first = 0; first < nodes.size(); first += blockSize) {
        std::ranges::fill(rows, Row{});
        const std::size_t last = std::min(first + blockSize, nodes.size());
        for (std::size_t i = first; i < last; ++i) {
            rows[condensation.of[nodes[i]]][(i - first) / 64] |= std::uint64_t{1}
                                                                 << ((i - first) % 64);
        }
        for (Number component = condensation.count(); component-- > 0;) {
            const Row& row = rows[component];
            ancestors[component] += countBits(row);
            for (const Number end : condensation.from(component)) {
                for (std::size_t i = 0; i < rowWords; ++i) {
                    rows[end][i] |= row[i];
                }
            }
        }
    }
    return ancestors;
}

// Returns: the nodes from which a path on the side leads to a link that only this side has.
std::vector<bool> reachOneSided(const LinkGraph& graph, Side side) {
    std::vector<bool> isMarked(graph.nodeCount());
    std::vector<Number> queue;
    const auto mark = [&](Number node) {
        if (!isMarked[node]) {
            isMarked[node] = true;
            queue.push_back(node);
        }
    };
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        if (std::ranges::any_of(graph.from(node), [&](const LinkEnd& end) {
                return end.state.on(side) && !end.state.on(otherSide(side));
            })) {
            mark(node);
        }
    }
    while (!queue.empty()) {
        const Number node = queue.back();
        queue.pop_back();
        for (const LinkEnd& end : graph.into(node)) {
            if (end.state.on(side)) {
                mark(end.node);
            }
        }
    }
    return isMarked;
}

template <class T, class Key>
void keepFirst(std::vector<T>& all, std::size_t count, Key key) {
    count = std::min(count, all.size());
    std::ranges::partial_sort(all, all.begin() + static_cast<std::ptrdiff_t>(count), {}, key);
    all.erase(all.begin() + static_cast<std::ptrdiff_t>(count), all.end());
}

class ReachFinder {
  public:
    explicit ReachFinder(const LinkGraph& graph)
        : graph_(graph), condensed_{{graph, Side::left}, {graph, Side::right}} {
        findAffectedFiles();
        findAddedLinks();
    }

    [[nodiscard]] std::uint64_t work() const {
        const std::uint64_t blocks = (graph_.nodeCount() + blockSize - 1) / blockSize;
        return blocks * (condensed_.left.rowWork() + 2 * condensed_.right.rowWork() +
                         2 * rowWords * (pairs_.size() + links_.size()));
    }

    Reach find(const ReachLimits& limits) {
        countAllBlocks();
        Reach reach;
        for (const Side side : sides) {
            reach.sides[side] = summaryOf(side);
        }
        reach.files = changedFiles();
        reach.filesAll = reach.files.size();
        keepFirst(reach.files, limits.files, [](const FileReach& file) {
            return std::pair(~(std::uint64_t{file.gained} + file.lost), file.file);
        });
        findPaths(reach.files);
        countDependents();
        reach.links = std::move(links_);
        reach.linksAll = reach.links.size();
        keepFirst(reach.links, limits.links, [](const LinkReach& link) {
            return std::pair(~(link.gained * (std::uint64_t{link.dependents} + 1)), link.link);
        });
        return reach;
    }

  private:
    /// The components of files, per side: these files reach the same.
    struct ComponentPair {
        BySide<Number> components;
        Number gained = 0;
        Number lost = 0;
    };

    void findAffectedFiles() {
        const BySide<std::vector<bool>> mayDiffer{reachOneSided(graph_, Side::left),
                                                  reachOneSided(graph_, Side::right)};
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            if (graph_.isFile(node, Side::left) && graph_.isFile(node, Side::right) &&
                (mayDiffer.left[node] || mayDiffer.right[node])) {
                affected_.push_back(node);
            }
        }
        const auto componentsOf = [&](Number node) {
            return std::pair(condensed_.left.of[node], condensed_.right.of[node]);
        };
        std::vector<Number> byPair = affected_;
        std::ranges::sort(byPair, {}, componentsOf);
        pairOf_.resize(graph_.nodeCount());
        for (std::size_t i = 0; i < byPair.size(); ++i) {
            const auto [left, right] = componentsOf(byPair[i]);
            if (i == 0 || componentsOf(byPair[i - 1]) != componentsOf(byPair[i])) {
                pairs_.push_back({.components = {left, right}});
            }
            pairOf_[byPair[i]] = static_cast<Number>(pairs_.size() - 1);
        }
    }

    void findAddedLinks() {
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            if (graph_.edit(node) != Edit::common) {
                continue;
            }
            for (const LinkEnd& end : graph_.from(node)) {
                if (end.state.edit() == Edit::added) {
                    links_.push_back({.link = {node, end.node}});
                }
            }
        }
    }

    void countAllBlocks() {
        BySide<ForwardRows> rows{ForwardRows(condensed_.left), ForwardRows(condensed_.right)};
        for (const Side side : sides) {
            reached_[side].resize(condensed_[side].count());
        }
        const Number nodes = graph_.nodeCount();
        for (Number first = 0; first < nodes; first += std::min<Number>(blockSize, nodes - first)) {
            const Number last = first + std::min<Number>(blockSize, nodes - first);
            for (const Side side : sides) {
                rows[side].fill(first, last, [&](Number node) { return graph_.has(node, side); });
                for (Number component = 0; component < condensed_[side].count(); ++component) {
                    reached_[side][component] += countBits(rows[side][component]);
                }
            }
            for (ComponentPair& pair : pairs_) {
                const Row& left = rows.left[pair.components.left];
                const Row& right = rows.right[pair.components.right];
                pair.gained += countOnlyInFirst(right, left);
                pair.lost += countOnlyInFirst(left, right);
            }
            for (LinkReach& link : links_) {
                link.gained +=
                    countOnlyInFirst(rows.right[condensed_.right.of[link.link.downstream]],
                                     rows.left[condensed_.left.of[link.link.upstream]]);
            }
        }
    }

    [[nodiscard]] SideReach summaryOf(Side side) const {
        SideReach summary;
        std::uint64_t files = 0;
        std::uint64_t nodes = 0;
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            nodes += graph_.has(node, side) ? 1 : 0;
            if (graph_.isFile(node, side)) {
                ++files;
                summary.pairs += reachOf(node, side);
            }
        }
        if (files != 0 && nodes > 1) {
            summary.cost = static_cast<double>(summary.pairs) / static_cast<double>(files) /
                           static_cast<double>(nodes - 1);
        }
        return summary;
    }

    [[nodiscard]] Number reachOf(Number node, Side side) const {
        return reached_[side][condensed_[side].of[node]] - 1;
    }

    [[nodiscard]] std::vector<FileReach> changedFiles() const {
        std::vector<FileReach> files;
        for (const Number node : affected_) {
            const ComponentPair& pair = pairs_[pairOf_[node]];
            if (pair.gained + pair.lost != 0) {
                files.push_back({.file = node,
                                 .reach = {reachOf(node, Side::left), reachOf(node, Side::right)},
                                 .gained = pair.gained,
                                 .lost = pair.lost,
                                 .path = {}});
            }
        }
        return files;
    }

    // 64 files at a time, a bit each: which components of the left side they reach.
    void findPaths(std::vector<FileReach>& files) {
        const Condensation& left = condensed_.left;
        BreadthFirst search(graph_, Side::right);
        std::vector<std::uint64_t> reachedBy(left.count());
        for (std::size_t first = 0; first < files.size(); first += 64) {
            std::ranges::fill(reachedBy, 0);
            const std::size_t last = std::min(first + 64, files.size());
            for (std::size_t i = first; i < last; ++i) {
                reachedBy[left.of[files[i].file]] |= std::uint64_t{1} << (i - first);
            }
            for (Number component = left.count(); component-- > 0;) {
                for (const Number end : left.from(component)) {
                    reachedBy[end] |= reachedBy[component];
                }
            }
            for (std::size_t i = first; i < last; ++i) {
                if (files[i].gained != 0) {
                    files[i].path = search.pathToFirst(files[i].file, [&](Number node) {
                        return (reachedBy[left.of[node]] >> (i - first) & 1U) == 0;
                    });
                }
            }
        }
    }

    void countDependents() {
        if (links_.empty()) {
            return;
        }
        const auto ancestors =
            countAncestors(condensed_.right, graph_.nodeCount(),
                           [&](Number node) { return graph_.isFile(node, Side::right); });
        for (LinkReach& link : links_) {
            const Number node = link.link.upstream;
            link.dependents =
                ancestors[condensed_.right.of[node]] - (graph_.isFile(node, Side::right) ? 1 : 0);
        }
    }

    const LinkGraph& graph_;
    BySide<Condensation> condensed_;
    std::vector<Number> affected_;  // files of both sides that may reach other nodes than before
    std::vector<ComponentPair> pairs_;
    std::vector<Number> pairOf_;           // by node, of affected files
    BySide<std::vector<Number>> reached_;  // by component, its own nodes included
    std::vector<LinkReach> links_;
};

}  // namespace

std::optional<Reach> findReach(const LinkGraph& graph, const ReachLimits& limits) {
    ReachFinder finder(graph);
    if (finder.work() > limits.work) {
        return std::nullopt;
    }
    return finder.find(limits);
}

}  // namespace dependency::insight
