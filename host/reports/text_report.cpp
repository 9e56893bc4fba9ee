#include "reports/text_report.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <comparisons/edit_type.h>
#include <fl/i18n/ustring.h>

#include "readers/node_id.h"
#include "reports/visible_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::GraphComparison;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;
using fl::i18n::ustring_to_utf8;
using fl::i18n::utf8_to_ustring;

struct Look {
    char sign;
    std::string_view colour;
};

Look lookOf(EditType type) {
    switch (type) {
        case EditType::rightOnly:
            return {'+', "\x1b[32m"};
        case EditType::leftOnly:
            return {'-', "\x1b[31m"};
        case EditType::changed:
            return {'~', "\x1b[33m"};
        case EditType::unchanged:
            break;
    }
    return {'=', "\x1b[2m"};
}

constexpr std::string_view plain = "\x1b[0m";

/// What an entry is called, and what its rows are.
struct Label {
    std::u16string text;
    std::u16string kind;  // of what is not a file
    std::string_view row;
    std::string_view rows;
    std::string_view withoutRows;  // what has changed where no row has
};

struct LabelOf {
    Label operator()(const std::shared_ptr<const Graph>& /*graph*/) const {
        return {u"graph", u"", "property", "properties", ""};
    }
    Label operator()(const std::shared_ptr<Node>& file) const {
        return {std::u16string(idAsRead(file->getID())), u"", "property", "properties", ""};
    }
    Label operator()(const ParallelDependencies& group) const {
        const auto type = group.downstream->getType();
        return {u"-> " + std::u16string(idAsRead(group.downstream->getID())),
                *type == *Type::FILE() ? std::u16string() : type->getName(), "dependency",
                "dependencies", "name or type of an end changed"};
    }
};

/// Returns: "3 properties changed, 1 added"; empty where no row differs.
std::string differingRows(const EditCounts& rows, const Label& label) {
    const std::pair<std::size_t, std::string_view> parts[] = {
        {rows.changed, "changed"}, {rows.added, "added"}, {rows.removed, "removed"}};
    std::string text;
    for (const auto& [count, what] : parts) {
        if (count != 0 && text.empty()) {
            text = fmt::format("{} {} {}", count, count == 1 ? label.row : label.rows, what);
        } else if (count != 0) {
            text += fmt::format(", {} {}", count, what);
        }
    }
    return text;
}

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

struct Line {
    EditType edit = EditType::unchanged;
    std::size_t depth = 0;
    std::u16string label;
    std::string note;  // in parentheses behind the label
};

class TextReport {
  public:
    TextReport(const Report& report, const TextStyle& style, Output& output)
        : report_(report), style_(style), output_(output) {}

    void write() {
        writeHeader();
        if (!report_.summary.showsDifference) {
            output_.write("No differences.\n");
            return;
        }
        writeEntry({.vertex = report_.comparison->root()}, 0);
        output_.write("\n");
        writeCounts("Files", report_.summary.files);
        writeCounts("Groups of dependencies", report_.summary.groups);
    }

  private:
    void writeHeader() {
        constexpr std::array<std::string_view, 2> words{"Comparing", "with"};
        for (std::size_t side = 0; side < words.size(); ++side) {
            const LoadedGraph& input = report_.inputs[side];
            output_.print("{:<9} {} ({}, {})\n", words[side], visible(input.source),
                          counted(input.files, "file", "files"),
                          counted(input.dependencies, "dependency", "dependencies"));
        }
        output_.write("\n");
    }

    void writeEntry(const GraphComparison::Child& child, std::size_t depth) {
        const auto& entry = (*report_.comparison)[child.vertex];
        const EditCounts rows = entry.detail.valid() ? rowsOf(entry.detail.get()) : EditCounts{};
        const EditType edit = ::comparisons::editType(entry.edit);
        const Label label = std::visit(LabelOf(), ::comparisons::anySide(entry.edit));
        const bool moved = child.orderMove || child.hierarchyMove;

        context_.push_back({.edit = edit,
                            .depth = depth,
                            .label = visible(label.text),
                            .note = noteOn(edit, label, rows, moved)});
        if (edit != EditType::unchanged || rows.showsDifference()) {
            writeContext();
        }
        for (const auto& grandchild : report_.comparison->children(child.vertex)) {
            writeEntry(grandchild, depth + 1);
        }
        if (!context_.empty()) {
            context_.pop_back();
        }
    }

    static std::string noteOn(EditType edit, const Label& label, const EditCounts& rows,
                              bool moved) {
        std::vector<std::string> parts;
        if (!label.kind.empty()) {
            parts.push_back(ustring_to_utf8(visible(label.kind)));
        }
        if (edit == EditType::changed || edit == EditType::unchanged) {
            if (moved) {
                parts.emplace_back("moved");
            }
            if (rows.showsDifference()) {
                parts.push_back(differingRows(rows, label));
            } else if (edit == EditType::changed && !label.withoutRows.empty()) {
                parts.emplace_back(label.withoutRows);
            }
        }
        return parts.empty() ? "" : fmt::format("  ({})", fmt::join(parts, ", "));
    }

    // Unchanged entries wait here until something below them differs.
    void writeContext() {
        for (const Line& line : context_) {
            writeLine(line);
        }
        context_.clear();
    }

    void writeLine(const Line& line) {
        const Look look = lookOf(line.edit);
        const std::size_t indent = line.depth * 2;
        output_.print("{:{}}{}{} {}{}{}\n", "", indent, style_.colours ? look.colour : "",
                      look.sign, ustring_to_utf8(fitted(line, indent + 2)),
                      style_.colours ? plain : "", line.note);
    }

    [[nodiscard]] std::u16string fitted(const Line& line, std::size_t before) const {
        if (!style_.columns) {
            return line.label;
        }
        constexpr std::size_t shortest = 16;
        const std::size_t taken = before + displayWidth(utf8_to_ustring(line.note));
        return shortened(line.label,
                         std::max(*style_.columns - std::min(*style_.columns, taken), shortest));
    }

    void writeCounts(std::string_view what, const EditCounts& counts) {
        output_.print("{:<22} {:>5} added {:>5} removed {:>5} changed {:>5} unchanged\n", what,
                      counts.added, counts.removed, counts.changed, counts.unchanged);
    }

    const Report& report_;
    const TextStyle& style_;
    Output& output_;
    std::vector<Line> context_;
};

}  // namespace

void writeTextReport(const Report& report, const TextStyle& style, Output& output) {
    TextReport(report, style, output).write();
}

}  // namespace depcompare
