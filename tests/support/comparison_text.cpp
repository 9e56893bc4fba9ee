#include "comparison_text.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include <comparisons/combined_comparison.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

#include "text_graph.h"

namespace dependency::test {

using boost::type_erasure::any_cast;
using ::comparisons::ComparisonValue;
using comparisons::GraphComparison;
using ::comparisons::Side;

namespace {

std::string quotedIfEmpty(const std::string& text) {
    return text.empty() ? "\"\"" : text;
}

struct Label {
    std::string operator()(const std::shared_ptr<const graph::Graph>& /*graph*/) const {
        return "graph";
    }
    std::string operator()(const std::shared_ptr<graph::Node>& node) const {
        return quotedIfEmpty(utf8(node->getID()));
    }
    std::string operator()(const comparisons::ParallelDependencies& group) const {
        return (*this)(group.upstream) + " -> " + (*this)(group.downstream);
    }
};

std::string joined(const std::string& left, const std::string& right) {
    return left == right ? left : left + " | " + right;
}

// Renders the sides of an edit with `text`, once if both sides have the same text.
template <class T, class Text>
std::string sidesOf(const ::comparisons::StatefulEdit<std::optional<T>, 2>& edit, Text text) {
    return hasBothSides(edit) ? joined(text(*edit[Side::left]), text(*edit[Side::right]))
                              : text(anySide(edit));
}

template <class T>
char markOf(const ::comparisons::StatefulEdit<std::optional<T>, 2>& edit) {
    if (hasBothSides(edit)) {
        return edit.isChanged() ? '~' : '=';
    }
    return edit.isChanged() ? '!' : edit[Side::left] ? '<' : '>';
}

void appendSubtree(std::string& text, const GraphComparison& comparison,
                   const GraphComparison::Child& top, std::size_t depth) {
    text.append(2 * depth, ' ') += textOf(comparison[top.vertex].edit);
    text += top.orderMove ? " (moved)" : "";
    text += top.hierarchyMove ? " (moved here)" : "";
    text += '\n';
    for (const auto& child : comparison.children(top.vertex)) {
        appendSubtree(text, comparison, child, depth + 1);
    }
}

template <class Range>
void requireOrder(const Range& range) {
    using comparisons::operator<;
    if (std::adjacent_find(range.begin(), range.end(),
                           [](const auto& a, const auto& b) { return b < a; }) != range.end()) {
        throw std::logic_error("out of order");
    }
}

template <class Edit>
std::string propertyRows(const std::vector<Edit>& edits) {
    requireOrder(edits);
    std::string text;
    for (const auto& edit : edits) {
        const auto name = [](const auto& row) { return quotedIfEmpty(utf8(row.name)); };
        const auto value = [](const auto& row) { return utf8(row.value); };
        text += markOf(edit);
        text += ' ' + sidesOf(edit, name) + ": " + sidesOf(edit, value) + '\n';
    }
    return text;
}

std::string dependencyRows(const std::vector<comparisons::DependencyEdit>& edits) {
    requireOrder(edits);
    std::set<std::string> types;
    std::string rows;
    for (const auto& edit : edits) {
        for (const Side side : ::comparisons::sides) {
            if (edit[side]) {
                const auto type = (*edit[side])->getType();
                types.insert(utf8(type->getID()) + ':' + utf8(type->getName()));
            }
        }
        rows += "  ";
        rows += markOf(edit);
        rows += ' ' +
                sidesOf(edit,
                        [](const auto& dependency) {
                            return utf8(dependency->getID() + u' ' +
                                        dependency->getUpstreamComponent()->getName() + u" -> " +
                                        dependency->getDownstreamComponent()->getName());
                        }) +
                '\n';
    }
    std::string text;
    for (const auto& type : types) {
        text += (text.empty() ? "" : ", ") + type;
    }
    return text + '\n' + rows;
}

// The subcomparators answer for any edit what the tree shows, whatever the edit's state says.
void requireFromSubcomparator(const std::string& rows, comparisons::ItemEdit edit) {
    comparisons::GraphSubcomparator graphs;
    comparisons::NodeSubcomparator nodes;
    comparisons::DependencySubcomparator groups;
    for (::comparisons::Subcomparator<comparisons::ItemEdit>* one :
         std::initializer_list<::comparisons::Subcomparator<comparisons::ItemEdit>*>{
             &graphs, &nodes, &groups}) {
        for (const bool state : {false, true}) {
            edit.setChanged(state);
            if (one->canCompare(edit) && (&graphs != one || hasBothSides(edit)) &&
                rowsOf(one->compare(edit).get()) != rows) {
                throw std::logic_error("the subcomparator finds other rows than the tree");
            }
        }
    }
}

}  // namespace

std::string labelOf(const comparisons::Item& item) {
    return std::visit(Label{}, item);
}

std::string labelOf(const comparisons::ItemEdit& edit) {
    return sidesOf(edit, [](const comparisons::Item& item) { return labelOf(item); });
}

std::string textOf(const comparisons::ItemEdit& edit) {
    return markOf(edit) + (' ' + labelOf(edit));
}

std::string treeOf(const GraphComparison& comparison) {
    std::string text;
    appendSubtree(text, comparison, {.vertex = comparison.root()}, 0);
    return text;
}

std::string compared(std::string_view left, std::string_view right) {
    return treeOf(*comparisons::compareGraphs(graphOf(left), graphOf(right)));
}

std::string rowsOf(const ComparisonValue& detail) {
    const std::string& type = get_type(detail);
    if (type == "graph_property_comparison") {
        return propertyRows(any_cast<const comparisons::GraphPropertyComparison&>(detail).edits());
    }
    if (type == "node_comparison") {
        return propertyRows(any_cast<const comparisons::NodePropertyComparison&>(detail).edits());
    }
    if (type == "dependency_comparison") {
        return dependencyRows(any_cast<const comparisons::DependencyComparison&>(detail).edits());
    }
    std::string text;
    for (const auto& member :
         any_cast<const ::comparisons::CombinedComparison&>(detail).members()) {
        text += rowsOf(member);
    }
    return text;
}

std::string rowsOf(std::string_view left, std::string_view right, std::string_view label) {
    const auto comparison = comparisons::compareGraphs(graphOf(left), graphOf(right));
    for (const auto vertex : comparison->entries()) {
        if (labelOf((*comparison)[vertex].edit) == label) {
            std::string rows = rowsOf((*comparison)[vertex].detail.get());
            requireFromSubcomparator(rows, (*comparison)[vertex].edit);
            return rows;
        }
    }
    throw std::out_of_range("no entry " + std::string(label));
}

}  // namespace dependency::test
