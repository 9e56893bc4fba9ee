#include "item_counts.h"

#include <variant>

#include <comparisons/edit_type.h>

namespace depcompare::bench {

namespace {

struct CountsOfKind {
    ItemCounts& counts;

    PairCounts* operator()(const std::shared_ptr<const dependency::graph::Graph>& /*graph*/) const {
        return nullptr;
    }
    PairCounts* operator()(const std::shared_ptr<dependency::graph::Node>& /*file*/) const {
        return &counts.files;
    }
    PairCounts* operator()(const dependency::comparisons::ParallelDependencies& /*group*/) const {
        return &counts.groups;
    }
};

}  // namespace

void addTo(ItemCounts& counts, const dependency::comparisons::ItemEdit& edit) {
    PairCounts* const kind = std::visit(CountsOfKind{counts}, ::comparisons::anySide(edit));
    if (kind == nullptr) {
        return;
    }
    switch (::comparisons::editType(edit)) {
        case ::comparisons::EditType::leftOnly:
            ++kind->removed;
            break;
        case ::comparisons::EditType::rightOnly:
            ++kind->added;
            break;
        case ::comparisons::EditType::changed:
            ++kind->changed;
            [[fallthrough]];
        case ::comparisons::EditType::unchanged:
            ++kind->common;
            break;
    }
}

}  // namespace depcompare::bench
