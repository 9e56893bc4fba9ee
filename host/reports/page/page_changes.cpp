#include "reports/page/page_changes.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include <fmt/format.h>

#include "presentation/counts_table.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"
#include "presentation/text_style.h"
#include "reports/json/json_detail.h"
#include "reports/page/html_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::ParallelDependencies;
using Entry = PresentedTree::Entry;

constexpr std::size_t mostLines = 2000;

std::string_view signOf(EditType type) {
    const char sign = lookOf(type).sign;
    return sign == '+' ? "+" : sign == '-' ? "\u2212" : sign == '~' ? "~" : "=";
}

void writeSign(EditType type, Output& output) {
    output.print("<span class=\"sign {0}\" title=\"{0}\">{1}</span> ", nameOf(type), signOf(type));
}

void writeCell(const TextCell& cell, Output& output) {
    output.print("<bdi>{}</bdi>", htmlText(cell.before));
    if (cell.changed) {
        output.print(" \u2192 <bdi>{}</bdi>", htmlText(cell.after));
    }
}

class Changes {
  public:
    Changes(const Report& report, Output& output) : tree_(*report.tree), output_(output) {}

    void write() {
        const auto leadsToVisible = tree_.leadsToVisible();
        output_.write("<ul class=\"changes\">\n");
        for (const Entry& entry : tree_.entries()) {
            // Everything hangs on the root; nobody needs to read that.
            const bool isRoot = entry.parent == PresentedTree::noParent;
            if (entry.visible != 0 || (leadsToVisible[entry.match->getIndex()] && !isRoot)) {
                write(entry);
            }
        }
        close(0);
        output_.write("</ul>\n");
        if (left_ != 0) {
            output_.print(
                "<p class=\"rest\">{} not in this list; with scripts the page shows "
                "everything.</p>\n",
                counted(left_, "more entry is", "more entries are"));
        }
    }

  private:
    void write(const Entry& entry) {
        if (lines_ >= mostLines) {
            left_ += entry.visible != 0 ? 1U : 0U;
            return;
        }
        const auto& edit = tree_.compared(entry.match).edit;
        close(std::holds_alternative<ParallelDependencies>(anySide(edit)) ? 1 : 0);
        if (depth_ == 1 && !inList_) {
            output_.write("<ul>");
            inList_ = true;
        }
        output_.write("<li>");
        ++depth_;
        ++lines_;
        writeLabel(entry);
        if (entry.visible != 0) {
            writeRows(entry);
        }
    }

    void writeLabel(const Entry& entry) {
        const EntryLabel label = labelOf(tree_, entry.match);
        if (entry.visible != 0) {
            writeSign(entry.match->getEditTypes().front(), output_);
        }
        std::u16string_view text = label.text;
        if (depth_ == 2 && text.starts_with(u"-> ")) {
            text.remove_prefix(3);
            output_.write("\u2192 ");
        }
        output_.print("<bdi>{}</bdi>", htmlText(text));
        if (!label.note.empty()) {
            output_.print("<small>{}</small>", htmlText(label.note));
        }
    }

    void writeRows(const Entry& entry) {
        const auto detail = tree_.shownDetail(entry.match);
        if (!detail) {
            return;
        }
        const TextTable table = textTableOf(*detail, tree_.compared(entry.match).edit);
        if (table.rows.empty()) {
            return;
        }
        const std::string_view between = depth_ == 2 ? " \u2192 " : ": ";
        output_.write("<ul class=\"rows\">");
        for (const TextRow& row : table.rows) {
            ++lines_;
            output_.write("<li>");
            writeSign(row.edit, output_);
            if (!row.caption.empty()) {
                output_.print("<bdi class=\"caption\">{}</bdi> ", htmlText(row.caption));
            }
            writeCell(row.name, output_);
            if (!row.value.empty()) {
                output_.write(between);
                writeCell(row.value, output_);
            }
            output_.write("</li>");
        }
        output_.write("</ul>");
    }

    void close(int depth) {
        while (depth_ > depth) {
            if (depth_ == 1 && inList_) {
                output_.write("</ul>");
                inList_ = false;
            }
            output_.write("</li>\n");
            --depth_;
        }
    }

    const PresentedTree& tree_;
    Output& output_;
    int depth_ = 0;        // items that are open: of a file, of a group
    bool inList_ = false;  // the list of groups is open
    std::size_t lines_ = 0;
    std::size_t left_ = 0;
};

void writeInputs(const Report& report, Output& output) {
    output.write("<p class=\"inputs\">");
    for (std::size_t side = 0; side < report.inputs.size(); ++side) {
        const LoadedGraph& input = report.inputs[side];
        output.print("{}<bdi>{}</bdi> ({}, {})", side == 0 ? "" : " compared with ",
                     htmlText(input.source), counted(input.files, "file", "files"),
                     counted(input.dependencies, "dependency", "dependencies"));
    }
    output.write("</p>\n");
}

void writeCountsTable(const Summary& summary, Output& output) {
    output.write("<table class=\"counts\"><thead><tr><td></td>");
    for (const EditType type :
         {EditType::rightOnly, EditType::leftOnly, EditType::changed, EditType::unchanged}) {
        output.write("<th scope=\"col\">");
        writeSign(type, output);
        output.print("{}</th>", nameOf(type));
    }
    output.write("</tr></thead><tbody>\n");
    for (const auto& [kind, counts] : countsByKind(summary)) {
        output.print(
            "<tr><th scope=\"row\">{}</th><td>{}</td><td>{}</td><td>{}</td><td>{}</td></tr>\n",
            kind, counts.added, counts.removed, counts.changed, counts.unchanged);
    }
    output.write("</tbody></table>\n");
}

void writeWarnings(const Report& report, Output& output) {
    for (std::size_t side = 0; side < report.inputs.size(); ++side) {
        for (const std::string& warning : report.ledger.sides[side].warnings) {
            output.print("<p class=\"trouble\">Warning: <bdi>{}</bdi>: <bdi>{}</bdi></p>\n",
                         htmlText(report.inputs[side].source), htmlText(warning));
        }
    }
}

void writeHidden(const Visibility& visibility, Output& output) {
    for (const HiddenByFilter& hidden : visibility.hidden) {
        if (hidden.entries.all() + hidden.rows != 0) {
            output.print("<p>Hidden by the {} filter: {}, {}.</p>\n", titleOf(hidden.filter),
                         counted(hidden.entries.all(), "entry", "entries"),
                         counted(hidden.rows, "row", "rows"));
        }
    }
}

}  // namespace

void writePageChanges(const Report& report, Output& output) {
    writeInputs(report, output);
    writeWarnings(report, output);
    writeCountsTable(report.summary, output);
    writeHidden(report.ledger.visibility, output);
    output.write("<h2>Changes</h2>\n");
    if (!report.tree->showsDifference()) {
        output.write(report.summary.showsDifference ? "<p>No visible differences.</p>\n"
                                                    : "<p>No differences.</p>\n");
        return;
    }
    Changes(report, output).write();
}

}  // namespace depcompare
