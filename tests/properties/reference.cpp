#include "properties/reference.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <tuple>
#include <utility>

#include <boost/algorithm/string/join.hpp>
#include <boost/range/iterator_range.hpp>

#include <comparisons/combined_comparison.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <fl/i18n/date_time.h>
#include <fl/i18n/message_catalog.h>
#include <fl/i18n/ustring.h>

#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::test {

using ::comparisons::BySide;
using ::comparisons::ComparisonValue;
using comparisons::Item;
using comparisons::ItemEdit;
using comparisons::ItemID;
using comparisons::ParallelDependencies;
using ::comparisons::Side;

namespace {

using Graph = std::shared_ptr<const graph::Graph>;
using Node = std::shared_ptr<graph::Node>;
using Dependency = std::shared_ptr<graph::Dependency>;

// What graphs and nodes are compared by.
template <class Owner>
auto propertiesOf(const Owner& owner) {
    std::vector<graph::Property> properties;
    for (const auto& key : owner.getPropertyKeys()) {
        properties.emplace_back(key, owner.getProperty(key));
    }
    return properties;
}

template <class Owner>
bool differ(const std::shared_ptr<Owner>& a, const std::shared_ptr<Owner>& b) {
    return propertiesOf(*a) != propertiesOf(*b);
}

bool differ(const ParallelDependencies& a, const ParallelDependencies& b) {
    return !(*a.upstream == *b.upstream) || !(*a.downstream == *b.downstream) ||
           !std::ranges::equal(a.dependencies, b.dependencies,
                               [](const auto& x, const auto& y) { return *x == *y; });
}

bool differ(const Item& a, const Item& b) {
    return a.index() == b.index() &&
           std::visit(
               [&](const auto& x) { return differ(x, std::get<std::decay_t<decltype(x)>>(b)); }, a);
}

std::vector<Node> filesOf(const graph::Graph& graph) {
    std::vector<Node> files;
    for (const auto& node : graph.getNodes()) {
        if (node->getType()->getID() == u"file") {
            files.push_back(node);
        }
    }
    return files;
}

std::vector<ParallelDependencies> groupsOf(const graph::Graph& graph, const Node& upstream) {
    std::map<std::tuple<std::u16string, std::u16string, std::u16string>, std::vector<Dependency>>
        byDownstream;
    for (const auto& dependency : graph.getDownstreamDependencies(upstream)) {
        const auto node = dependency->getDownstreamNode();
        byDownstream[{node->getType()->getID(), fl::i18n::to_lower(node->getName()), node->getID()}]
            .push_back(dependency);
    }
    std::vector<ParallelDependencies> groups;
    groups.reserve(byDownstream.size());
    for (const auto& [key, dependencies] : byDownstream) {
        groups.emplace_back(
            upstream, dependencies.front()->getDownstreamNode(),
            ParallelDependencies::Dependencies(dependencies.begin(), dependencies.end()));
    }
    return groups;
}

ItemID idOf(const Item& item) {
    if (const auto* const group = std::get_if<ParallelDependencies>(&item)) {
        return {.node = group->upstream->getID(), .downstream = group->downstream->getID()};
    }
    return {.node = std::get<1>(item)->getID(), .downstream = std::nullopt};
}

std::u16string keyOf(const Item& item) {
    const ItemID id = idOf(item);
    return id.node + id.downstream.value_or(u"");
}

std::u16string displayedName(const std::u16string& key, const std::vector<std::string>& catalogs) {
    for (const auto& catalog : catalogs) {
        try {
            return fl::i18n::MessageCatalog::get_message(
                fl::i18n::MessageID(catalog + ':' + utf8(key)), fl::i18n::Locale::global());
        } catch (const std::exception&) {
            continue;
        }
    }
    return key;
}

std::map<std::u16string, std::u16string> valuesOf(const graph::Graph& graph) {
    std::map<std::u16string, std::u16string> rows;
    for (const auto& [key, value] : propertiesOf(graph)) {
        const auto name = displayedName(
            key, {"ORBITA:dependency:analysis", "VeltrinoDependencyAnalysis:Analyze"});
        if (name == u"timestamp") {
            rows[displayedName(u"AnalysisTimestamp", {"ORBITA:dependency:comparisons"})] =
                fl::i18n::date_time::to_ustring(getTimeStamp(graph), fl::i18n::DateFormat{2});
        } else {
            rows[name] = value;
        }
    }
    return rows;
}

std::map<std::u16string, std::u16string> valuesOf(const graph::Node& node) {
    std::map<std::u16string, std::u16string> rows;
    for (const auto& [key, value] : propertiesOf(node)) {
        rows[displayedName(key, {"ORBITA:dependency:comparisons"})] = value;
    }
    return rows;
}

template <std::size_t Kind, class Comparison>
ComparisonValue propertyDetail(const ItemEdit& edit) {
    using Edit = typename std::decay_t<decltype(std::declval<Comparison>().edits())>::value_type;
    std::map<std::u16string, Edit> rows;
    for (const Side side : ::comparisons::sides) {
        if (edit[side]) {
            for (const auto& [name, value] : valuesOf(*std::get<Kind>(*edit[side]))) {
                rows[name][side] = typename Edit::value_type::value_type{name, value};
            }
        }
    }
    std::vector<Edit> edits;
    for (auto& [name, row] : rows) {
        row.setChanged(hasBothSides(row) && row[Side::left]->value != row[Side::right]->value);
        edits.push_back(row);
    }
    return ComparisonValue(Comparison(std::move(edits)));
}

ComparisonValue dependencyDetail(const ItemEdit& edit) {
    std::map<std::u16string, std::map<std::u16string, comparisons::DependencyEdit>> types;
    for (const Side side : ::comparisons::sides) {
        if (edit[side]) {
            for (const auto& dependency : std::get<2>(*edit[side]).dependencies) {
                const auto key = dependency->getUpstreamComponent()->getName() +
                                 dependency->getDownstreamComponent()->getName();
                types[dependency->getType()->getID()][key][side] = dependency;
            }
        }
    }
    std::vector<ComparisonValue> members;
    for (const auto& [type, pairs] : types) {
        std::vector<comparisons::DependencyEdit> edits;
        for (auto [key, pair] : pairs) {
            pair.setChanged(hasBothSides(pair) && !(**pair[Side::left] == **pair[Side::right]));
            edits.push_back(pair);
        }
        std::sort(edits.begin(), edits.end(),
                  [](const auto& a, const auto& b) { return comparisons::operator<(a, b); });
        members.emplace_back(comparisons::DependencyComparison(std::move(edits)));
    }
    return ComparisonValue(::comparisons::CombinedComparison(std::move(members)));
}

ComparisonValue detailOf(const ItemEdit& edit) {
    const auto kind = anySide(edit).index();
    return kind == 0   ? propertyDetail<0, comparisons::GraphPropertyComparison>(edit)
           : kind == 1 ? propertyDetail<1, comparisons::NodePropertyComparison>(edit)
                       : dependencyDetail(edit);
}

// Whose order is open in part, so that only the set of rows counts.
std::string sortedRowsOf(const ComparisonValue& detail) {
    std::istringstream rows(rowsOf(detail));
    std::multiset<std::string> lines;
    for (std::string line; std::getline(rows, line);) {
        lines.insert(line);
    }
    return boost::join(lines, "\n") + '\n';
}

std::string placeOf(const std::string& parent, std::uint32_t position) {
    return " at " + std::to_string(position) + " of " + parent;
}

}  // namespace

std::vector<std::string> linesOf(const comparisons::GraphComparison& comparison) {
    const auto& tree = comparison.tree();
    std::vector<std::string> lines;
    for (const auto vertex : comparison.entries()) {
        const auto& entry = comparison[vertex];
        BySide<std::string> places;
        for (const auto& link : boost::make_iterator_range(boost::in_edges(vertex, tree))) {
            for (const Side side : tree[link].sides) {
                places[side] =
                    placeOf(labelOf(comparison[boost::source(link, tree)].edit[side].value()),
                            entry.positions[side].value());
            }
        }
        lines.push_back(textOf(entry.edit) + boost::join(places, " |") + '\n' +
                        sortedRowsOf(entry.detail.get()));
    }
    std::ranges::sort(lines);
    return lines;
}

Reference::Reference(const Graph& leftGraph, const Graph& rightGraph)
    : graphs_{leftGraph, rightGraph} {
    std::map<std::u16string, BySide<std::optional<Item>>> table;
    for (const Side side : ::comparisons::sides) {
        const graph::Graph& graph = *graphs_[side];
        std::vector<Item> items;
        for (const auto& file : filesOf(graph)) {
            for (const auto& group : groupsOf(graph, file)) {
                items.emplace_back(group);
            }
        }
        for (const auto& file : filesOf(graph)) {
            items.emplace_back(file);
        }
        for (const Item& item : items) {
            table[keyOf(item)][side] = item;
        }
        for (const Item& item : items) {
            const Item& kept = *table[keyOf(item)][side];
            if (kept != item) {
                losses_.emplace_back(side, idOf(item), idOf(kept));
            }
        }
    }
    edits_.emplace_back(leftGraph, rightGraph, differ(leftGraph, rightGraph));
    for (const auto& [key, sides] : table) {
        const auto& left = sides[Side::left];
        const auto& right = sides[Side::right];
        edits_.emplace_back(left, right, left && right && differ(*left, *right));
    }
}

bool Reference::pairsKinds() const {
    return std::ranges::any_of(edits_, [](const ItemEdit& edit) {
        return hasBothSides(edit) && edit[Side::left]->index() != edit[Side::right]->index();
    });
}

std::vector<std::string> Reference::lines() const {
    BySide<std::map<std::string, std::string>> places;  // by label, which is unique on a side
    for (const Side side : ::comparisons::sides) {
        auto files = filesOf(*graphs_[side]);
        std::ranges::sort(files, {}, [](const Node& file) { return file->getID(); });
        for (std::uint32_t i = 0; i < files.size(); ++i) {
            places[side][labelOf(files[i])] = placeOf("graph", i);
            const auto groups = groupsOf(*graphs_[side], files[i]);
            for (std::uint32_t k = 0; k < groups.size(); ++k) {
                places[side][labelOf(groups[k])] = placeOf(labelOf(files[i]), k);
            }
        }
    }
    std::vector<std::string> lines;
    for (const ItemEdit& edit : edits_) {
        BySide<std::string> found;
        for (const Side side : ::comparisons::sides) {
            found[side] = edit[side] ? places[side][labelOf(*edit[side])] : "";
        }
        lines.push_back(textOf(edit) + boost::join(found, " |") + '\n' +
                        sortedRowsOf(detailOf(edit)));
    }
    std::ranges::sort(lines);
    return lines;
}

}  // namespace dependency::test
