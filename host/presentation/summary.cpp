#include "presentation/summary.h"

#include <cstdint>
#include <stdexcept>
#include <variant>

#include <boost/type_erasure/any_cast.hpp>

#include <comparisons/combined_comparison.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>

namespace depcompare {

namespace {

using ::comparisons::CombinedComparison;
using ::comparisons::ComparisonValue;
using ::comparisons::EditType;
using dependency::comparisons::DependencyComparison;
using dependency::comparisons::GraphComparison;
using dependency::comparisons::GraphPropertyComparison;
using dependency::comparisons::Item;
using dependency::comparisons::NodePropertyComparison;
using dependency::comparisons::ParallelDependencies;

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

// Where one kind of item is counted; null for what is not counted.
struct Places {
    EditCounts* entries;
    EditCounts* rows;
};

class PlacesOf {
  public:
    explicit PlacesOf(Summary& summary) : summary_(summary) {}

    Places operator()(const std::shared_ptr<const dependency::graph::Graph>& /*graph*/) const {
        return {nullptr, &summary_.graphProperties};
    }
    Places operator()(const std::shared_ptr<dependency::graph::Node>& /*file*/) const {
        return {&summary_.files, &summary_.fileProperties};
    }
    Places operator()(const ParallelDependencies& /*group*/) const {
        return {&summary_.groups, &summary_.dependencies};
    }

  private:
    Summary& summary_;
};

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

namespace {

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

Summary summarize(const GraphComparison& comparison) {
    Summary summary;
    for (const auto vertex : comparison.entries()) {
        const auto& entry = comparison[vertex];
        const Places places = std::visit(PlacesOf(summary), ::comparisons::anySide(entry.edit));
        const EditType type = ::comparisons::editType(entry.edit);
        summary.showsDifference |= type != EditType::unchanged;
        if (places.entries != nullptr) {
            places.entries->count(type);
        }
        if (entry.detail.valid()) {
            const EditCounts rows = rowsOf(entry.detail.get());
            summary.showsDifference |= rows.showsDifference();
            *places.rows += rows;
        }
    }
    return summary;
}

}  // namespace depcompare
