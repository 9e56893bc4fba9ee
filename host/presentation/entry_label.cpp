#include "presentation/entry_label.h"

#include <variant>
#include <vector>

#include "draft/marked_id.h"
#include "output/visible_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;
using Match = PresentedTree::Match;

struct TextOf {
    std::u16string operator()(const std::shared_ptr<const Graph>& /*graph*/) const {
        return u"graph";
    }
    std::u16string operator()(const std::shared_ptr<Node>& file) const {
        return std::u16string(idAsRead(file->getID()));
    }
    std::u16string operator()(const ParallelDependencies& group) const {
        return u"-> " + std::u16string(idAsRead(group.downstream->getID()));
    }
};

bool isMoved(Match match) {
    return match->getIsOrderMove().any() || match->getIsHierMove().any();
}

// A group also compares its end nodes, which have no row.
bool onlyItsEndsChanged(const PresentedTree& tree, Match match) {
    const auto metrics = tree.metrics(match);
    return match->getEditTypes().front() == EditType::changed && metrics && metrics->areZero();
}

std::vector<std::u16string> notesOn(const PresentedTree& tree, Match match) {
    std::vector<std::u16string> notes;
    const auto& item = anySide(tree.compared(match).edit);
    if (const auto* group = std::get_if<ParallelDependencies>(&item)) {
        if (const auto type = group->downstream->getType(); !(*type == *Type::FILE())) {
            notes.push_back(type->getName());
        }
        if (onlyItsEndsChanged(tree, match)) {
            notes.emplace_back(u"name or type of an end changed");
        }
    }
    if (isMoved(match)) {
        notes.emplace_back(u"moved");
    }
    return notes;
}

}  // namespace

EntryLabel labelOf(const PresentedTree& tree, Match match) {
    EntryLabel label{.text = visible(std::visit(TextOf(), anySide(tree.compared(match).edit))),
                     .note = {}};
    for (const std::u16string& note : notesOn(tree, match)) {
        label.note += label.note.empty() ? u" (" : u", ";
        label.note += visible(note);
    }
    if (!label.note.empty()) {
        label.note += u')';
    }
    return label;
}

}  // namespace depcompare
