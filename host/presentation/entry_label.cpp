#include "presentation/entry_label.h"

#include <algorithm>
#include <utility>
#include <variant>

#include <comparisons/side.h>

#include "draft/marked_id.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using ::comparisons::Side;
using dependency::comparisons::ItemEdit;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;

class LabelMaker {
  public:
    explicit LabelMaker(EntryLabel& label) : label_(label) {}

    void operator()(const std::shared_ptr<const Graph>& /*graph*/) const {}
    void operator()(const std::shared_ptr<Node>& file) const {
        label_.id = idAsRead(file->getID());
    }
    void operator()(const ParallelDependencies& group) const {
        label_.id = idAsRead(group.upstream->getID());
        label_.downstream = idAsRead(group.downstream->getID());
        if (const auto type = group.downstream->getType(); !(*type == *Type::FILE())) {
            label_.downstreamType = type->getName();
        }
    }

  private:
    EntryLabel& label_;
};

std::vector<std::u16string> typesIn(const ParallelDependencies& group) {
    std::vector<std::u16string> types;
    for (const auto& dependency : group.dependencies) {
        types.push_back(dependency->getType()->getID());
    }
    std::ranges::sort(types);
    return types;
}

/// Requires: an edit of a group with both sides.
bool sameEndsAndTypes(const ItemEdit& edit) {
    const auto& left = std::get<ParallelDependencies>(*edit[Side::left]);
    const auto& right = std::get<ParallelDependencies>(*edit[Side::right]);
    return *left.upstream == *right.upstream && *left.downstream == *right.downstream &&
           typesIn(left) == typesIn(right);
}

}  // namespace

std::vector<std::string_view> EntryLabel::remarks() const {
    std::vector<std::string_view> remarks;
    if (onlyEndsChanged) {
        remarks.emplace_back("name or type of an end changed");
    }
    if (moved) {
        remarks.emplace_back("moved");
    }
    return remarks;
}

EntryLabel labelOf(const PresentedTree& tree, PresentedTree::Match match) {
    const ItemEdit& edit = tree.compared(match).edit;
    const auto& item = anySide(edit);
    EntryLabel label;
    label.edit = match->getEditTypes().front();
    label.kind = kindOf(item);
    label.moved = PresentedTree::isMoved(match);
    label.oldID = tree.oldID(match);
    label.rows = rowsInLabel(tree, match);
    if (label.kind == EntryKind::group && label.edit == EditType::changed) {
        // A group also compares its end nodes, which have no row.
        label.onlyEndsChanged = tree.changedWithoutRow(match);
        label.onlyComponentsChanged = sameEndsAndTypes(edit);
    }
    std::visit(LabelMaker(label), item);
    return label;
}

std::string_view nameOf(EntryKind kind) {
    switch (kind) {
        case EntryKind::graph:
            return "graph";
        case EntryKind::file:
            return "file";
        case EntryKind::group:
            break;
    }
    return "group";
}

bool isFolded(const EntryLabel& label, const EnabledFilters& filters) {
    return label.onlyComponentsChanged && !label.onlyEndsChanged && !showDetails(filters);
}

bool isOneSided(EditType type) {
    return type == EditType::rightOnly || type == EditType::leftOnly;
}

std::string_view nameOf(EditType type) {
    switch (type) {
        case EditType::rightOnly:
            return "added";
        case EditType::leftOnly:
            return "removed";
        case EditType::changed:
            return "changed";
        case EditType::unchanged:
            break;
    }
    return "unchanged";
}

char signOf(EditType type) {
    switch (type) {
        case EditType::rightOnly:
            return '+';
        case EditType::leftOnly:
            return '-';
        case EditType::changed:
            return '~';
        case EditType::unchanged:
            break;
    }
    return '=';
}

}  // namespace depcompare
