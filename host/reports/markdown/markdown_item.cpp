#include "reports/markdown/markdown_item.h"

#include <map>
#include <string_view>
#include <variant>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/marked_id.h"
#include "presentation/entry_table.h"
#include "reports/markdown/markdown_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::Item;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using dependency::graph::Type;

struct TitleOf {
    std::string operator()(const std::shared_ptr<const Graph>& /*graph*/) const {
        return "The graph itself";
    }
    std::string operator()(const std::shared_ptr<Node>& file) const {
        return markdownCode(idAsRead(file->getID()));
    }
    std::string operator()(const ParallelDependencies& group) const {
        std::string title =
            fmt::format("{} \u2192 {}", markdownCode(idAsRead(group.upstream->getID())),
                        markdownCode(idAsRead(group.downstream->getID())));
        if (const auto type = group.downstream->getType(); !(*type == *Type::FILE())) {
            title += fmt::format(" ({})", markdownCode(type->getName()));
        }
        return title;
    }
};

std::string cellText(const TextCell& cell) {
    return cell.changed
               ? fmt::format("{} \u2192 {}", markdownCode(cell.before), markdownCode(cell.after))
               : markdownCode(cell.before);
}

std::string rowText(const TextRow& row, bool ofGroup) {
    std::vector<std::string> parts;
    if (!row.caption.empty()) {
        parts.push_back(markdownCode(row.caption));
    }
    if (!row.name.empty()) {
        parts.push_back(cellText(row.name) + (ofGroup ? "" : ":"));
    }
    if (!row.value.empty() || !ofGroup) {
        parts.push_back((ofGroup ? "\u2192 " : "") + cellText(row.value));
    }
    return fmt::format("{}", fmt::join(parts, " "));
}

std::string_view wordOf(EditType edit) {
    return edit == EditType::rightOnly  ? "added"
           : edit == EditType::leftOnly ? "removed"
                                        : "changed";
}

std::string typesIn(const TextTable& table) {
    std::map<std::u16string, std::size_t> counts;
    for (const TextRow& row : table.rows) {
        ++counts[row.caption];
    }
    std::vector<std::string> parts;
    parts.reserve(counts.size());
    for (const auto& [caption, count] : counts) {
        parts.push_back(count == 1 ? markdownCode(caption)
                                   : fmt::format("{} \u00d7 {}", count, markdownCode(caption)));
    }
    return parts.empty() ? "" : fmt::format(": {}", fmt::join(parts, ", "));
}

}  // namespace

std::string markdownItem(const PresentedTree& tree, const PresentedTree::Entry& entry) {
    const auto& edit = tree.compared(entry.match).edit;
    const Item& item = anySide(edit);
    const bool group = std::holds_alternative<ParallelDependencies>(item);
    const bool whole = entry.match->getEditTypes().front() == EditType::rightOnly ||
                       entry.match->getEditTypes().front() == EditType::leftOnly;
    std::string text = "- " + std::visit(TitleOf(), item);
    const auto detail = tree.shownDetail(entry.match);
    const TextTable table = detail ? textTableOf(*detail, edit) : TextTable();
    if (whole) {
        return text + (group ? typesIn(table) : "") + "\n";
    }
    text += "\n";
    for (const TextRow& row : table.rows) {
        if (row.edit != EditType::unchanged) {
            text += fmt::format("  - {} {}\n", wordOf(row.edit), rowText(row, group));
        }
    }
    return text;
}

}  // namespace depcompare
