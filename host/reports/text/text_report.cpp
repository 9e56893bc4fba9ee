#include "reports/text/text_report.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "output/visible_text.h"
#include "presentation/entry_label.h"
#include "presentation/ledger_text.h"
#include "reports/text/text_lines.h"

namespace depcompare {

namespace {

using dependency::comparisons::ParallelDependencies;
using Match = PresentedTree::Match;
using Entry = PresentedTree::Entry;

bool isGroup(const PresentedTree& tree, Match match) {
    return std::holds_alternative<ParallelDependencies>(anySide(tree.compared(match).edit));
}

bool isMoved(const Entry& entry) {
    return entry.match->getIsOrderMove().any() || entry.match->getIsHierMove().any();
}

std::size_t widestGroup(const PresentedTree& tree) {
    constexpr std::size_t indentAndSign = 4;
    std::size_t widest = 0;
    for (const Entry& entry : tree.entries()) {
        if (entry.visible != 0 && isGroup(tree, entry.match)) {
            const EntryLabel label = labelOf(tree, entry.match);
            widest = std::max(widest,
                              indentAndSign + displayWidth(label.text) + displayWidth(label.note));
        }
    }
    return widest;
}

class TreeText {
  public:
    TreeText(const PresentedTree& tree, const TextStyle& style, Output& output)
        : tree_(tree), lines_(style, widestGroup(tree), output) {}

    void write() {
        const auto leadsToVisible = tree_.leadsToVisible();
        for (const Entry& entry : tree_.entries()) {
            if (leadsToVisible[entry.match->getIndex()]) {
                write(entry);
            }
        }
        lines_.finishLine();
    }

  private:
    void write(const Entry& entry) {
        const bool isRoot = entry.parent == PresentedTree::noParent;
        if (entry.visible == 0) {
            // Everything hangs on the root; nobody needs to read that.
            if (!isRoot) {
                lines_.entry(0, std::nullopt, labelOf(tree_, entry.match));
            }
            return;
        }
        const auto detail = tree_.shownDetail(entry.match);
        const TextTable table =
            detail ? textTableOf(*detail, tree_.compared(entry.match).edit) : TextTable();
        const bool group = isGroup(tree_, entry.match);
        if (group && !table.rows.empty()) {
            lines_.headingBeside(table.heading);
        }
        lines_.entry(group ? 1 : 0, entry.match->getEditTypes().front(),
                     labelOf(tree_, entry.match));
        if (group) {
            lines_.rowsBeside(table);
        } else {
            lines_.tableBelow(table);
        }
    }

    const PresentedTree& tree_;
    TextLines lines_;
};

void writeHeader(const std::array<LoadedGraph, 2>& inputs, Output& output) {
    constexpr std::array<std::string_view, 2> words{"Comparing", "with"};
    for (std::size_t side = 0; side < words.size(); ++side) {
        output.print("{:<9} {} ({}, {})\n", words[side], visible(inputs[side].source),
                     counted(inputs[side].files, "file", "files"),
                     counted(inputs[side].dependencies, "dependency", "dependencies"));
    }
    output.write("\n");
}

bool hasSomethingToShow(const PresentedTree& tree) {
    return tree.showsDifference() || std::ranges::any_of(tree.entries(), [](const Entry& entry) {
               return entry.visible != 0 && isMoved(entry);
           });
}

}  // namespace

void writeTextReport(const Report& report, const TextStyle& style, Output& output) {
    writeHeader(report.inputs, output);
    if (!report.tree->showsDifference()) {
        output.write(report.summary.showsDifference ? "No visible differences.\n"
                                                    : "No differences.\n");
    }
    if (hasSomethingToShow(*report.tree)) {
        TreeText(*report.tree, style, output).write();
    }
    output.write("\n");
    writeEnding(report, style, output);
}

}  // namespace depcompare
