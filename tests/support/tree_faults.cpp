#include "tree_faults.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <iterator>
#include <map>
#include <set>
#include <unordered_map>

#include <dependency/comparisons/graph_traversal_model.h>
#include <dependency/comparisons/match_graphs.h>

#include "comparison_text.h"

namespace dependency::test {

using comparisons::GraphComparison;
using ::comparisons::indexOf;
using comparisons::Item;
using comparisons::ItemEdit;
using ::comparisons::Side;

namespace {

using Graph = std::shared_ptr<const graph::Graph>;
using Vertex = GraphComparison::Vertex;

std::size_t longestIncreasing(const std::vector<std::uint32_t>& numbers) {
    std::vector<std::size_t> ending;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::size_t best = 1;
        for (std::size_t j = 0; j < i; ++j) {
            best = numbers[j] < numbers[i] ? std::max(best, ending[j] + 1) : best;
        }
        ending.push_back(best);
    }
    return ending.empty() ? 0 : *std::ranges::max_element(ending);
}

class TreeCheck {
  public:
    TreeCheck(const GraphComparison& comparison, const Graph& left, const Graph& right)
        : comparison_(comparison), graphs_{left, right} {}

    std::vector<std::string> run() {
        checkEdits();
        indexEntries();
        for (const Side side : ::comparisons::sides) {
            checkReachable(side);
        }
        checkLinks();
        for (const Vertex vertex : comparison_.entries()) {
            checkDetail(vertex);
            checkMergedChildren(vertex);
        }
        checkEveryEntryIsShownOnce();
        return std::move(faults_);
    }

  private:
    void require(bool holds, const std::string& what) {
        if (!holds) {
            faults_.push_back(what);
        }
    }

    [[nodiscard]] std::string at(Vertex vertex) const {
        return " at " + labelOf(comparison_[vertex].edit);
    }

    void checkEdits() {
        std::unordered_map<ItemEdit, int> count;
        for (const ItemEdit& edit : comparisons::matchGraphs(graphs_[0], graphs_[1])) {
            ++count[edit];
        }
        for (const Vertex vertex : comparison_.entries()) {
            --count[comparison_[vertex].edit];
        }
        for (const auto& [edit, difference] : count) {
            require(difference == 0, "edit without its one entry: " + labelOf(edit));
        }
        const auto& root = comparison_[comparison_.root()];
        for (const Side side : ::comparisons::sides) {
            require(root.edit[side] == Item(graphs_[indexOf(side)]), "root of another graph");
        }
        require(boost::in_degree(comparison_.root(), comparison_.tree()) == 0,
                "root with a parent");
    }

    void indexEntries() {
        for (const Vertex vertex : comparison_.entries()) {
            for (const Side side : ::comparisons::sides) {
                if (const auto& item = comparison_[vertex].edit[side]) {
                    const bool added = entryOf_[indexOf(side)].emplace(*item, vertex).second;
                    require(added, "two entries for one item" + at(vertex));
                }
            }
        }
    }

    // Follows the model from the graph down, and notes every place where an entry must stand.
    void checkReachable(Side side) {
        const comparisons::GraphTraversalModel model(graphs_[indexOf(side)]);
        std::vector<Item> pending{graphs_[indexOf(side)]};
        std::size_t reached = 0;
        while (!pending.empty()) {
            const Item item = std::move(pending.back());
            pending.pop_back();
            const auto parent = entryOf_[indexOf(side)].find(item);
            if (parent == entryOf_[indexOf(side)].end()) {
                require(false, "item without an entry: " + labelOf(item));
                continue;
            }
            ++reached;
            checkChildren(parent->second, side, model(item), pending);
        }
        require(reached == entryOf_[indexOf(side)].size(), "entries that the side does not reach");
    }

    void checkChildren(Vertex parent, Side side, const std::vector<Item>& children,
                       std::vector<Item>& pending) {
        const auto listed = comparison_.children(parent, side);
        require(listed.size() == children.size(), "other number of children" + at(parent));
        for (std::uint32_t i = 0; i < std::min(listed.size(), children.size()); ++i) {
            const auto& entry = comparison_[listed[i]];
            require(entry.edit[side] == children[i], "other child" + at(parent));
            require(entry.positions[indexOf(side)] == i, "other position" + at(listed[i]));
            numbered_.insert({listed[i], side});
            linked_[{parent, listed[i]}].push_back(side);
        }
        pending.insert(pending.end(), children.begin(), children.end());
    }

    void checkLinks() {
        const auto& tree = comparison_.tree();
        require(boost::num_edges(tree) == linked_.size(), "other number of links");
        for (const auto& link : boost::make_iterator_range(boost::edges(tree))) {
            const auto child = boost::target(link, tree);
            const auto expected = linked_.find({boost::source(link, tree), child});
            require(
                expected != linked_.end() && std::ranges::equal(tree[link].sides, expected->second),
                "link with other sides" + at(child));
        }
        for (const Vertex vertex : comparison_.entries()) {
            for (const Side side : ::comparisons::sides) {
                require(comparison_[vertex].positions[indexOf(side)].has_value() ==
                            numbered_.contains({vertex, side}),
                        "position without a parent" + at(vertex));
            }
        }
    }

    void checkDetail(Vertex vertex) {
        static const std::array<std::string, 3> types{"graph_property_comparison",
                                                      "node_comparison", "combined_comparison"};
        const auto& entry = comparison_[vertex];
        const auto& detail = entry.detail;
        if (!detail.valid() ||
            detail.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            require(false, "no detail, or one that blocks" + at(vertex));
            return;
        }
        require(get_type(detail.get()) == types.at(anySide(entry.edit).index()),
                "detail of another kind" + at(vertex));
        require(!entry.edit.isChanged() || hasBothSides(entry.edit),
                "changed, one side" + at(vertex));
    }

    void checkMergedChildren(Vertex parent) {
        std::array<std::vector<Vertex>, 2> shown;
        std::vector<std::uint32_t> inPlace;
        std::vector<std::uint32_t> stayed;
        for (const auto& child : comparison_.children(parent)) {
            const auto& entry = comparison_[child.vertex];
            const auto& sides =
                comparison_.tree()[boost::edge(parent, child.vertex, comparison_.tree()).first]
                    .sides;
            for (const Side side : sides) {
                shown[indexOf(side)].push_back(child.vertex);
            }
            if (sides.size() == 2) {
                stayed.push_back(entry.positions[0].value_or(0));
                if (!child.orderMove) {
                    inPlace.push_back(stayed.back());
                }
            }
            require(child.hierarchyMove == (hasBothSides(entry.edit) && sides.size() == 1),
                    "hierarchy move" + at(child.vertex));
            require(!child.orderMove || sides.size() == 2, "order move" + at(child.vertex));
            ++timesShown_[child.vertex];
        }
        require(shown[1] == comparison_.children(parent, Side::right), "right order" + at(parent));
        require(std::ranges::is_sorted(inPlace), "left order" + at(parent));
        require(inPlace.size() == longestIncreasing(stayed), "too many order moves" + at(parent));
    }

    void checkEveryEntryIsShownOnce() {
        ++timesShown_[comparison_.root()];
        for (const Vertex vertex : comparison_.entries()) {
            require(timesShown_[vertex] == 1, "not shown once" + at(vertex));
        }
    }

    const GraphComparison& comparison_;
    std::array<Graph, 2> graphs_;
    std::array<std::unordered_map<Item, Vertex>, 2> entryOf_;
    std::set<std::pair<Vertex, Side>> numbered_;
    std::map<std::pair<Vertex, Vertex>, std::vector<Side>> linked_;
    std::map<Vertex, int> timesShown_;
    std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> faultsOf(const GraphComparison& comparison, const Graph& left,
                                  const Graph& right) {
    return TreeCheck(comparison, left, right).run();
}

}  // namespace dependency::test
