#include "properties/reference.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <tuple>

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

using boost::type_erasure::any_cast;
using ::comparisons::BySide;
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

std::map<std::u16string, std::u16string> rowsOf(const graph::Graph& graph) {
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

std::map<std::u16string, std::u16string> rowsOf(const graph::Node& node) {
    std::map<std::u16string, std::u16string> rows;
    for (const auto& [key, value] : propertiesOf(node)) {
        rows[displayedName(key, {"ORBITA:dependency:comparisons"})] = value;
    }
    return rows;
}

std::string textOf(std::u16string_view name, std::u16string_view value) {
    return utf8(name) + " = " + utf8(value);
}

std::string textOf(const graph::Dependency& dependency) {
    return utf8(dependency.getID()) + ": " + comparisons::describeDependency(dependency);
}

template <std::size_t Kind>
std::vector<FlatRow> propertyRows(const ItemEdit& edit) {
    std::map<std::u16string, FlatRow> rows;
    for (const Side side : ::comparisons::sides) {
        if (edit[side]) {
            for (const auto& [name, value] : rowsOf(*std::get<Kind>(*edit[side]))) {
                rows[name].sides[side] = textOf(name, value);
            }
        }
    }
    std::vector<FlatRow> flat;
    for (auto& [name, row] : rows) {
        row.changed = row.sides[Side::left] && row.sides[Side::right] &&
                      row.sides[Side::left] != row.sides[Side::right];
        flat.push_back(row);
    }
    return flat;
}

std::vector<FlatRow> dependencyRows(const ItemEdit& edit) {
    std::map<std::array<std::u16string, 2>, BySide<Dependency>> pairs;
    for (const Side side : ::comparisons::sides) {
        if (edit[side]) {
            for (const auto& dependency : std::get<2>(*edit[side]).dependencies) {
                const auto key = dependency->getUpstreamComponent()->getName() +
                                 dependency->getDownstreamComponent()->getName();
                pairs[{dependency->getType()->getID(), key}][side] = dependency;
            }
        }
    }
    std::vector<FlatRow> rows;
    for (const auto& [key, pair] : pairs) {
        FlatRow& row = rows.emplace_back();
        row.type = utf8(key[0]);
        for (const Side side : ::comparisons::sides) {
            if (pair[side]) {
                row.sides[side] = textOf(*pair[side]);
            }
        }
        const auto& [left, right] = static_cast<const std::array<Dependency, 2>&>(pair);
        row.changed = left && right && !(*left == *right);
    }
    return rows;
}

void requireOrder(bool inOrder, const char* what) {
    if (!inOrder) {
        throw std::logic_error(std::string(what) + " out of order");
    }
}

// The rows of the library's own details, in the terms of the reference.
template <class Edit, class Text>
void appendRows(std::vector<FlatRow>& rows, const std::vector<Edit>& edits, const std::string& type,
                Text text) {
    using comparisons::operator<;
    requireOrder(std::is_sorted(edits.begin(), edits.end(),
                                [](const Edit& a, const Edit& b) { return a < b; }),
                 "rows");
    for (const auto& edit : edits) {
        FlatRow& row = rows.emplace_back();
        row.type = type;
        for (const Side side : ::comparisons::sides) {
            if (edit[side]) {
                row.sides[side] = text(*edit[side]);
            }
        }
        row.changed = edit.isChanged();
    }
}

std::vector<FlatRow> rowsOfDetail(const ::comparisons::ComparisonValue& detail) {
    const auto property = [](const auto& row) { return textOf(row.name, row.value); };
    std::vector<FlatRow> rows;
    if (get_type(detail) == "graph_property_comparison") {
        appendRows(rows, any_cast<const comparisons::GraphPropertyComparison&>(detail).edits(), "",
                   property);
    } else if (get_type(detail) == "node_comparison") {
        appendRows(rows, any_cast<const comparisons::NodePropertyComparison&>(detail).edits(), "",
                   property);
    } else {
        std::optional<std::u16string> last;
        for (const auto& member :
             any_cast<const ::comparisons::CombinedComparison&>(detail).members()) {
            const auto& edits = any_cast<const comparisons::DependencyComparison&>(member).edits();
            const auto type = anySide(edits.at(0))->getType()->getID();
            requireOrder(!last || *last < type, "types");
            last = type;
            appendRows(rows, edits, utf8(type),
                       [](const Dependency& dependency) { return textOf(*dependency); });
        }
    }
    return rows;
}

}  // namespace

std::vector<FlatEntry> flattened(const comparisons::GraphComparison& comparison) {
    const auto& tree = comparison.tree();
    std::vector<FlatEntry> entries;
    for (const auto vertex : comparison.entries()) {
        const auto& entry = comparison[vertex];
        FlatEntry& flat = entries.emplace_back();
        for (const Side side : ::comparisons::sides) {
            if (entry.edit[side]) {
                flat.labels[side] = labelOf(*entry.edit[side]);
            }
        }
        for (const auto& link : boost::make_iterator_range(boost::in_edges(vertex, tree))) {
            for (const Side side : tree[link].sides) {
                flat.parents[side] =
                    labelOf(comparison[boost::source(link, tree)].edit[side].value());
            }
        }
        flat.positions = entry.positions;
        flat.changed = entry.edit.isChanged();
        flat.rows = rowsOfDetail(entry.detail.get());
        std::ranges::sort(flat.rows);
    }
    std::ranges::sort(entries);
    return entries;
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
                losses_.push_back({.side = side, .lost = idOf(item), .kept = idOf(kept)});
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

std::vector<FlatEntry> Reference::entries() const {
    // By side and label, which is unique there: the parent's label and the position below it.
    BySide<std::map<std::string, std::pair<std::string, std::uint32_t>>> places;
    for (const Side side : ::comparisons::sides) {
        auto files = filesOf(*graphs_[side]);
        std::ranges::sort(files, {}, [](const Node& file) { return file->getID(); });
        for (std::uint32_t i = 0; i < files.size(); ++i) {
            places[side][labelOf(files[i])] = {"graph", i};
            const auto groups = groupsOf(*graphs_[side], files[i]);
            for (std::uint32_t k = 0; k < groups.size(); ++k) {
                places[side][labelOf(groups[k])] = {labelOf(files[i]), k};
            }
        }
    }
    std::vector<FlatEntry> entries;
    for (const ItemEdit& edit : edits_) {
        FlatEntry& entry = entries.emplace_back();
        const auto kind = anySide(edit).index();
        for (const Side side : ::comparisons::sides) {
            if (edit[side]) {
                entry.labels[side] = labelOf(*edit[side]);
            }
            if (edit[side] && kind != 0) {
                std::tie(entry.parents[side], entry.positions[side]) =
                    places[side].at(*entry.labels[side]);
            }
        }
        entry.changed = edit.isChanged();
        entry.rows = kind == 0   ? propertyRows<0>(edit)
                     : kind == 1 ? propertyRows<1>(edit)
                                 : dependencyRows(edit);
        std::ranges::sort(entry.rows);
    }
    std::ranges::sort(entries);
    return entries;
}

}  // namespace dependency::test
