#include "presentation/summary.h"

#include <boost/type_erasure/any_cast.hpp>

#include <comparisons/combined_comparison.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

#include "presentation/presented_tree.h"

namespace depcompare {

namespace {

using ::comparisons::CombinedComparison;
using ::comparisons::ComparisonValue;
using ::comparisons::EditType;
using dependency::comparisons::DependencyComparison;
using dependency::comparisons::GraphComparison;
using dependency::comparisons::GraphPropertyComparison;
using dependency::comparisons::NodePropertyComparison;

template <class Comparison>
const Comparison* held(const ComparisonValue& detail) {
    return boost::type_erasure::any_cast<const Comparison*>(&detail);
}

template <class Comparison>
EditCounts countEdits(const Comparison& comparison) {
    EditCounts counts;
    for (const auto& edit : comparison.edits()) {
        counts.count(::comparisons::editType(edit));
    }
    return counts;
}

/// Returns: the rows of a detail comparison; those of all members for a combined one.
EditCounts rowsOf(const ComparisonValue& detail) {
    if (const auto* graph = held<GraphPropertyComparison>(detail)) {
        return countEdits(*graph);
    }
    if (const auto* file = held<NodePropertyComparison>(detail)) {
        return countEdits(*file);
    }
    if (const auto* dependencies = held<DependencyComparison>(detail)) {
        return countEdits(*dependencies);
    }
    EditCounts counts;
    for (const auto& member :
         boost::type_erasure::any_cast<const CombinedComparison&>(detail).members()) {
        counts += rowsOf(member);
    }
    return counts;
}

}  // namespace

void EditCounts::count(EditType type) {
    switch (type) {
        case EditType::rightOnly:
            ++added;
            break;
        case EditType::leftOnly:
            ++removed;
            break;
        case EditType::changed:
            ++changed;
            break;
        case EditType::unchanged:
            ++unchanged;
            break;
    }
}

EditCounts& EditCounts::operator+=(const EditCounts& other) {
    added += other.added;
    removed += other.removed;
    changed += other.changed;
    unchanged += other.unchanged;
    return *this;
}

std::array<NamedCounts, 5> Summary::byKind() const {
    return {{{"files", "Files", files},
             {"groups", "Groups", groups},
             {"dependencies", "Dependencies", dependencies},
             {"fileProperties", "File properties", fileProperties},
             {"graphProperties", "Graph properties", graphProperties}}};
}

Summary summarize(const GraphComparison& comparison) {
    Summary summary;
    for (const auto vertex : comparison.entries()) {
        const auto& entry = comparison[vertex];
        const EditType type = ::comparisons::editType(entry.edit);
        summary.showsDifference |= type != EditType::unchanged;
        EditCounts rows;
        if (entry.detail.valid()) {
            rows = rowsOf(entry.detail.get());
            summary.showsDifference |= rows.showsDifference();
        }
        switch (kindOf(::comparisons::anySide(entry.edit))) {
            case EntryKind::graph:
                summary.graphProperties += rows;
                break;
            case EntryKind::file:
                summary.files.count(type);
                summary.fileProperties += rows;
                break;
            case EntryKind::group:
                summary.groups.count(type);
                summary.dependencies += rows;
                break;
        }
    }
    return summary;
}

}  // namespace depcompare
