#include "reports/text/text_report.h"

#include <algorithm>
#include <string>
#include <string_view>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/visible_text.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"
#include "reports/text/text_lines.h"

namespace depcompare {

namespace {

using Entry = PresentedTree::Entry;

std::size_t widestGroup(const PresentedTree& tree) {
    std::size_t widest = 0;
    for (const Entry& entry : tree.entries()) {
        if (entry.visible != 0 &&
            kindOf(anySide(tree.compared(entry.match).edit)) == EntryKind::group) {
            widest = std::max(widest, widthOf(labelOf(tree, entry.match)));
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
        const EntryLabel label = labelOf(tree_, entry.match);
        if (entry.visible == 0) {
            // Every entry is below the root, so a line for it would say nothing.
            if (!isRoot) {
                lines_.entry(label, false);
            }
            return;
        }
        const EntryTable table = tableOf(tree_, entry.match);
        const bool isGroup = label.kind == EntryKind::group;
        if (isGroup && !table.rows.empty()) {
            lines_.headingBeside(table.heading);
        }
        lines_.entry(label, true);
        if (isGroup) {
            lines_.rowsBeside(table);
        } else {
            lines_.tableBelow(table);
        }
    }

    const PresentedTree& tree_;
    TextLines lines_;
};

class Ending {
  public:
    Ending(const Report& report, const TextStyle& style, Output& output)
        : report_(report), style_(style), output_(output) {}

    void write() {
        auto hidden = hiddenLines(report_.ledger.visibility);
        if (!hidden.empty()) {
            hidden.back() += "; show with --no-filter";
            for (const std::string& line : hidden) {
                writeBroken(line, 0);
            }
            output_.write("\n");
        }
        writeSide("Left ", report_.ledger.sides[0]);
        writeSide("Right", report_.ledger.sides[1]);
        output_.print("\n{}", countsTable(report_.summary));
    }

  private:
    void writeSide(std::string_view name, const SideLedger& side) {
        const std::string nodes = fmt::format("{}  {};", name, nodesLine(side));
        const std::string dependencies = dependenciesLine(side);
        if (nodes.size() + 1 + dependencies.size() <= style_.width()) {
            output_.print("{} {}\n", nodes, dependencies);
        } else {
            writeBroken(nodes, 0);
            writeBroken(dependencies, indent);
        }
        if (const std::string leftOut = leftOutLine(side); !leftOut.empty()) {
            writeBroken(leftOut, indent);
        }
        for (const std::string& warning : side.warnings) {
            writeBroken("Warning: " + visible(warning), indent);
        }
    }

    void writeBroken(const std::string& text, std::size_t firstIndent) {
        constexpr std::size_t fewest = 20;
        const auto lines = broken(fl::i18n::utf8_to_ustring(text),
                                  std::max(style_.width(), fewest + indent) - indent);
        for (const std::u16string& line : lines) {
            const std::size_t end = line.find_last_not_of(u' ') + 1;
            output_.print("{:{}}{}\n", "", &line == lines.data() ? firstIndent : indent,
                          fl::i18n::ustring_to_utf8(withoutCommand(line.substr(0, end))));
        }
    }

    static constexpr std::size_t indent = 7;  // after the name of a side

    const Report& report_;
    const TextStyle& style_;
    Output& output_;
};

}  // namespace

void writeTextReport(const Report& report, const TextStyle& style, Output& output) {
    output.print("Comparing {} ({})\n", visible(report.inputs[0].source),
                 contentsOf(report.inputs[0]));
    output.print("with      {} ({})\n\n", visible(report.inputs[1].source),
                 contentsOf(report.inputs[1]));
    if (const std::string_view verdict = report.verdict(); !verdict.empty()) {
        output.print("{}\n", verdict);
    } else {
        TreeText(*report.tree, style, output).write();
    }
    output.write("\n");
    Ending(report, style, output).write();
}

}  // namespace depcompare
