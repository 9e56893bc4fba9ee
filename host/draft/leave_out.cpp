#include "draft/leave_out.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "draft/glob.h"
#include "draft/seeded_hash.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using Globs = std::vector<std::string>;

struct SelectedNodes {
    std::vector<bool> isExcluded;
    std::vector<bool> isSelected;  // with its dependencies

    SelectedNodes(const GraphDraft& draft, const Selection& selection) {
        for (const NodeDraft& node : draft.nodes) {
            const std::string id(node.id);
            const bool excluded = matchesAnyGlob(selection.exclude, id);
            isExcluded.push_back(excluded);
            isSelected.push_back(!excluded &&
                                 (selection.only.empty() || matchesAnyGlob(selection.only, id)));
        }
    }

    [[nodiscard]] bool areNone() const {
        return std::ranges::find(isSelected, true) == isSelected.end();
    }
};

/// Keeps these nodes, and the dependencies of the selected ones that lead to them.
void keep(GraphDraft& draft, const std::vector<bool>& kept, const std::vector<bool>& selected,
          LeftOut& leftOut) {
    std::vector<NodeNumber> numbers(draft.nodes.size());
    NodeNumber next = 0;
    for (NodeNumber node = 0; node < draft.nodes.size(); ++node) {
        numbers[node] = next;
        if (kept[node]) {
            draft.nodes[next++] = draft.nodes[node];
        }
    }
    leftOut.nodes = draft.nodes.size() - next;
    draft.nodes.resize(next);
    draft.idCandidates.clear();  // they have served
    std::erase_if(draft.nodeProperties, [&](const auto& added) { return !kept[added.node]; });
    for (NodePropertyDraft& added : draft.nodeProperties) {
        added.node = numbers[added.node];
    }
    leftOut.dependencies = std::erase_if(draft.edges, [&](const EdgeDraft& edge) {
        return !selected[at(edge, EdgeColumn::upstream)] || !kept[at(edge, EdgeColumn::downstream)];
    });
    for (EdgeDraft& edge : draft.edges) {
        for (const EdgeColumn end : {EdgeColumn::upstream, EdgeColumn::downstream}) {
            at(edge, end) = numbers[at(edge, end)];
        }
    }
}

void leaveOutNodes(std::array<GraphDraft, 2>& drafts, const Selection& selection,
                   std::array<LeftOut, 2>& leftOut) {
    const std::array selected{SelectedNodes(drafts[0], selection),
                              SelectedNodes(drafts[1], selection)};
    const bool isEmpty = drafts[0].nodes.empty() && drafts[1].nodes.empty();
    if (!isEmpty && selected[0].areNone() && selected[1].areNone()) {
        throw InputError(drafts[0].source, 0,
                         "--only and --exclude leave no node, here or in the other graph");
    }
    std::unordered_set<std::string_view, SeededHash> needed;
    for (std::size_t side = 0; side < drafts.size(); ++side) {
        for (const EdgeDraft& edge : drafts[side].edges) {
            if (selected[side].isSelected[at(edge, EdgeColumn::upstream)]) {
                needed.insert(drafts[side].nodes[at(edge, EdgeColumn::downstream)].id);
            }
        }
    }
    for (std::size_t side = 0; side < drafts.size(); ++side) {
        const auto& [isExcluded, isSelected] = selected[side];
        std::vector<bool> kept = isSelected;
        for (NodeNumber node = 0; node < kept.size(); ++node) {
            kept[node] =
                kept[node] || (!isExcluded[node] && needed.contains(drafts[side].nodes[node].id));
        }
        keep(drafts[side], kept, isSelected, leftOut[side]);
    }
}

/// Which texts match; each is looked at once.
class MatchingTexts {
  public:
    MatchingTexts(const GraphDraft& draft, const Globs& globs)
        : texts_(draft.texts), globs_(globs), known_(draft.texts.size()) {}

    [[nodiscard]] bool contain(TextNumber text) {
        if (known_[text] == State::unknown) {
            known_[text] =
                matchesAnyGlob(globs_, std::string(texts_[text])) ? State::matches : State::differs;
        }
        return known_[text] == State::matches;
    }

  private:
    enum class State : std::uint8_t { unknown, matches, differs };

    const std::vector<std::string_view>& texts_;
    const Globs& globs_;
    std::vector<State> known_;
};

void leaveOutProperties(GraphDraft& draft, const Globs& keys, LeftOut& leftOut) {
    MatchingTexts ignored(draft, keys);
    leftOut.properties += std::erase_if(draft.nodeProperties, [&](const auto& added) {
        return ignored.contain(added.property.key);
    });
    for (auto* const properties : {&draft.nodeDefaults, &draft.graphProperties}) {
        leftOut.properties += std::erase_if(*properties, [&](const PropertyDraft& property) {
            return ignored.contain(property.key);
        });
    }
}

void leaveOutComponents(GraphDraft& draft, const Globs& names, LeftOut& leftOut) {
    const TextNumber none = draft.textNumber("");
    MatchingTexts ignored(draft, names);
    for (EdgeDraft& edge : draft.edges) {
        for (const auto& [name, type] :
             {std::pair(EdgeColumn::upstreamComponent, EdgeColumn::upstreamComponentType),
              std::pair(EdgeColumn::downstreamComponent, EdgeColumn::downstreamComponentType)}) {
            if (at(edge, name) != none && ignored.contain(at(edge, name))) {
                at(edge, name) = none;
                at(edge, type) = none;
                ++leftOut.components;
            }
        }
    }
}

}  // namespace

std::array<LeftOut, 2> leaveOut(std::array<GraphDraft, 2>& drafts, const Selection& selection) {
    std::array<LeftOut, 2> leftOut;
    if (!selection.only.empty() || !selection.exclude.empty()) {
        leaveOutNodes(drafts, selection, leftOut);
    }
    for (std::size_t side = 0; side < drafts.size(); ++side) {
        GraphDraft& draft = drafts[side];
        if (!selection.ignoredProperties.empty()) {
            leaveOutProperties(draft, selection.ignoredProperties, leftOut[side]);
        }
        if (!selection.keepsBuildData) {
            leftOut[side].buildProperties =
                std::erase_if(draft.graphProperties, [&](const PropertyDraft& property) {
                    return std::ranges::find(draft.buildKeys, property.key) !=
                           draft.buildKeys.end();
                });
        }
        if (!selection.ignoredComponents.empty()) {
            leaveOutComponents(draft, selection.ignoredComponents, leftOut[side]);
        }
    }
    return leftOut;
}

}  // namespace depcompare
