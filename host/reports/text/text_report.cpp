#include "reports/text/text_report.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <comparisons/edit_type.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "output/visible_text.h"
#include "presentation/enabled_filters.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"
#include "reports/text/at_large_text.h"
#include "reports/text/text_lines.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using fl::i18n::utf8_to_ustring;
using Entry = PresentedTree::Entry;

/// What of the visible the tree does not list.
struct Unlisted {
    std::size_t properties = 0;  ///< of added and removed files
    std::size_t groups = 0;      ///< in which only components differ
};

class TreeText {
  public:
    TreeText(const PresentedTree& tree, const TextStyle& style, Output& output)
        : tree_(tree), lines_(style, widestGroup(), output) {}

    Unlisted write() {
        const auto leadsToVisible = tree_.leadsToVisible();
        for (const Entry& entry : tree_.entries()) {
            if (leadsToVisible[entry.match->getIndex()]) {
                write(entry);
            }
        }
        writeBelowFile();
        lines_.finishLine();
        return unlisted_;
    }

  private:
    [[nodiscard]] std::size_t widestGroup() const {
        std::size_t widest = 0;
        for (const Entry& entry : tree_.entries()) {
            if (entry.visible != 0 &&
                kindOf(anySide(tree_.compared(entry.match).edit)) == EntryKind::group) {
                const EntryLabel label = labelOf(tree_, entry.match);
                widest =
                    isFolded(label, tree_.filters()) ? widest : std::max(widest, widthOf(label));
            }
        }
        return widest;
    }

    struct Group {
        EntryLabel label;
        EntryTable table;
    };

    void write(const Entry& entry) {
        EntryLabel label = labelOf(tree_, entry.match);
        if (label.kind != EntryKind::group) {
            writeBelowFile();
            writeFile(entry, label);
        } else if (isFolded(label, tree_.filters())) {
            ++folded_;
            lastFolded_ = label.downstream;
        } else {
            groups_.push_back({.label = std::move(label), .table = tableOf(tree_, entry.match)});
        }
    }

    void writeFile(const Entry& entry, const EntryLabel& label) {
        isBesideFile_ = true;
        if (entry.visible == 0) {
            // Every entry is below the root, so a line for it would say nothing.
            if (entry.parent != PresentedTree::noParent) {
                lines_.entry(label, false);
            }
            return;
        }
        lines_.entry(label, true);
        if (isOneSided(label.edit) && !showDetails(tree_.filters())) {
            unlisted_.properties += tree_.rowCount(entry.match).visible;
        } else {
            lines_.tableBelow(tableOf(tree_, entry.match));
        }
    }

    /// Ends what is below a file.
    void writeBelowFile() {
        const bool showsComponents = std::ranges::any_of(groups_, [](const Group& group) {
            return !std::ranges::all_of(group.table.rows, isWithoutCells);
        });
        for (auto& [label, table] : groups_) {
            if (!showsComponents) {
                table.heading.name = {};
                table.heading.value = {};
            }
            if (!table.rows.empty()) {
                lines_.headingBeside(table.heading);
            }
            lines_.entry(label, true);
            lines_.rowsBeside(table);
            isBesideFile_ = false;
        }
        groups_.clear();
        if (folded_ == 0) {
            return;
        }
        const std::u16string what = folded_ == 1
                                        ? u"-> " + visible(lastFolded_)
                                        : utf8_to_ustring(counted(folded_, "link", "links"));
        lines_.remark(EditType::changed, what + u" (only components differ)", isBesideFile_);
        unlisted_.groups += std::exchange(folded_, 0);
    }

    const PresentedTree& tree_;
    TextLines lines_;
    Unlisted unlisted_;
    std::vector<Group> groups_;  // those of the last file that have lines of their own
    std::size_t folded_ = 0;     // the others
    std::u16string lastFolded_;
    bool isBesideFile_ = false;  // the open line is that of the file
};

class Ending {
  public:
    Ending(const Report& report, const TextStyle& style, Output& output)
        : report_(report), style_(style), output_(output) {}

    void write(const Unlisted& unlisted) {
        auto lines = hiddenLines(report_.ledger.visibility);
        if (const std::string what = describe(unlisted); !what.empty()) {
            lines.push_back("Not listed: " + what);
        }
        if (!lines.empty()) {
            lines.back() += "; show with --no-filter";
            for (const std::string& line : lines) {
                writeBroken(line, 0);
            }
            output_.write("\n");
        }
        writeSide("Left ", report_.ledger.sides[0]);
        writeSide("Right", report_.ledger.sides[1]);
    }

  private:
    static std::string describe(const Unlisted& unlisted) {
        std::vector<std::string> parts;
        if (unlisted.properties != 0) {
            parts.push_back(counted(unlisted.properties, "property", "properties") +
                            " of added and removed files");
        }
        if (unlisted.groups != 0) {
            parts.push_back(counted(unlisted.groups, "link", "links") +
                            " in which only components differ");
        }
        return fmt::format("{}", fmt::join(parts, ", "));
    }

    void writeSide(std::string_view name, const SideLedger& side) {
        const std::string nodes = fmt::format("{}  {};", name, nodesLine(side));
        const std::string dependencies = dependenciesLine(side);
        if (nodes.size() + 1 + dependencies.size() <= style_.width()) {
            output_.print("{} {}\n", nodes, dependencies);
        } else {
            writeBroken(nodes, 0);
            writeBroken(dependencies, indent);
        }
        if (const std::string leftOut = leftOutLine(side, LeftOutParts::others); !leftOut.empty()) {
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
    writeAtLarge(report, style, output);
    output.write("\n");
    Unlisted unlisted;
    if (report.tree->showsDifference()) {
        unlisted = TreeText(*report.tree, style, output).write();
        output.write("\n");
    }
    Ending(report, style, output).write(unlisted);
}

void writeSummaryReport(const Report& report, const TextStyle& style, Output& output) {
    writeAtLarge(report, style, output);
}

}  // namespace depcompare
