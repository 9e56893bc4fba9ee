#include "reports/page/page_changes.h"

#include <string>
#include <string_view>

#include <fmt/format.h>

#include "presentation/at_large.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"
#include "reports/page/html_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using Entry = PresentedTree::Entry;

constexpr std::size_t mostLines = 2000;

void writeSign(EditType type, Output& output) {
    const char sign = signOf(type);
    output.print("<span class=\"sign {0}\" title=\"{0}\">{1}</span> ", nameOf(type),
                 sign == '-' ? std::string("\u2212") : std::string(1, sign));
}

void writeCell(const TableCell& cell, Output& output) {
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
            // Every entry is below the root, so an item for it would say nothing.
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
        const EntryLabel label = labelOf(tree_, entry.match);
        close(label.kind == EntryKind::group ? 1 : 0);
        if (depth_ == 1 && !inList_) {
            output_.write("<ul>");
            inList_ = true;
        }
        output_.write("<li>");
        ++depth_;
        ++lines_;
        if (entry.visible != 0) {
            writeSign(label.edit, output_);
        }
        writeLabel(label);
        if (entry.visible != 0) {
            writeRows(entry);
        }
    }

    void writeLabel(const EntryLabel& label) {
        const bool isGroup = label.kind == EntryKind::group;
        const auto text = label.kind == EntryKind::graph ? u"graph"
                          : isGroup                      ? label.downstream
                                                         : label.id;
        output_.print("{}<bdi>{}</bdi>", isGroup ? "\u2192 " : "", htmlText(text));
        if (label.downstreamType) {
            output_.print(" <small><bdi>{}</bdi></small>", htmlText(*label.downstreamType));
        }
        if (label.oldID) {
            output_.print(" \u2190 <bdi>{}</bdi>", htmlText(*label.oldID));
        }
        for (const TableRow& row : label.rows) {
            output_.write(" ");
            if (!row.value.changed) {
                writeSign(row.edit, output_);
            }
            writeCell(row.value, output_);
        }
        for (const std::string_view remark : label.remarks()) {
            output_.print(" <small>{}</small>", remark);
        }
    }

    void writeRows(const Entry& entry) {
        const EntryTable table = tableOf(tree_, entry.match);
        if (table.rows.empty()) {
            return;
        }
        const std::string_view between = depth_ == 2 ? " \u2192 " : ": ";
        output_.write("<ul class=\"rows\">");
        for (const TableRow& row : table.rows) {
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
    int depth_ = 0;        // how many items are open: a file's, a group's
    bool inList_ = false;  // the list of groups is open
    std::size_t lines_ = 0;
    std::size_t left_ = 0;
};

void writeInputs(const Report& report, Output& output) {
    output.write("<p class=\"inputs\">");
    for (std::size_t side = 0; side < report.inputs.size(); ++side) {
        const LoadedGraph& input = report.inputs[side];
        output.print("{}<bdi>{}</bdi> ({})", side == 0 ? "" : " compared with ",
                     htmlText(input.source), contentsOf(input));
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
    for (const auto& [name, title, counts] : summary.byKind()) {
        output.print(
            "<tr><th scope=\"row\">{}</th><td>{}</td><td>{}</td><td>{}</td><td>{}</td></tr>\n",
            title, counts.added, counts.removed, counts.changed, counts.unchanged);
    }
    output.write("</tbody></table>\n");
}

void writeStatement(const Statement& statement, Output& output) {
    output.write("<dd>");
    if (statement.edit) {
        writeSign(*statement.edit, output);
    }
    for (const Phrase& phrase : statement.phrases) {
        switch (phrase.kind) {
            case Phrase::Kind::words:
                output.write(htmlText(phrase.text));
                break;
            case Phrase::Kind::name:
                output.print("<bdi>{}</bdi>", htmlText(phrase.text));
                break;
            case Phrase::Kind::leadsTo:
                output.write(" \u2192 ");
                break;
        }
    }
    output.write("</dd>\n");
}

/// Writes what scripts show in the overview.
void writeOverview(const Report& report, Output& output) {
    output.print("<div class=\"at-large\">\n<h2>Overview</h2>\n<p>{}</p>\n", verdictOf(report));
    if (const auto topics = atLarge(report); !topics.empty()) {
        output.write("<dl>\n");
        for (const Topic& topic : topics) {
            if (!topic.title.empty()) {
                output.print("<dt>{}</dt>\n", topic.title);
            }
            for (const Statement& statement : topic.statements) {
                writeStatement(statement, output);
            }
            if (topic.more != 0) {
                output.print("<dd>{} more, which the page shows with scripts</dd>\n", topic.more);
            }
        }
        output.write("</dl>\n");
    }
    output.write("</div>\n");
}

void writeWarnings(const Report& report, Output& output) {
    for (const std::string& warning : report.ledger.warnings) {
        output.print("<p class=\"trouble\">Warning: {}.</p>\n", warning);
    }
    for (std::size_t side = 0; side < report.inputs.size(); ++side) {
        for (const std::string& warning : report.ledger.sides[side].warnings) {
            output.print("<p class=\"trouble\">Warning: <bdi>{}</bdi>: <bdi>{}</bdi></p>\n",
                         htmlText(report.inputs[side].source), htmlText(warning));
        }
    }
}

}  // namespace

void writePageChanges(const Report& report, Output& output) {
    writeInputs(report, output);
    writeWarnings(report, output);
    writeCountsTable(report.summary, output);
    for (const std::string& line : hiddenLines(report.ledger.visibility)) {
        output.print("<p>{}.</p>\n", line);
    }
    writeOverview(report, output);
    if (report.verdict().empty()) {
        output.write("<h2>Changes</h2>\n");
        Changes(report, output).write();
    }
}

}  // namespace depcompare
