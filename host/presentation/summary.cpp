#include "presentation/summary.h"

#include "presentation/detail_edits.h"
#include "presentation/presented_tree.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::GraphComparison;

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
             {"groups", "Links", groups},
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
            forEachEdit(entry.detail.get(),
                        [&](const auto& edit) { rows.count(::comparisons::editType(edit)); });
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
