#include "reports/markdown/markdown_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include <comparisons/edit_type.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;

/// Of a text of the graph, in UTF-16 units.
constexpr std::size_t longestText = 200;
/// Renderers know no code span between fences of any length.
constexpr std::size_t longestFence = 16;

std::size_t longestRunOfTicks(std::string_view text) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (const char letter : text) {
        run = letter == '`' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

std::string withoutTicks(std::string_view text) {
    std::string shown;
    for (const char letter : text) {
        shown += letter == '`' ? std::string_view("\\x60") : std::string_view(&letter, 1);
    }
    return shown;
}

std::string cellText(const TableCell& cell) {
    return cell.changed ? fmt::format("{} \u2192 {}", codeOf(cell.before), codeOf(cell.after))
                        : codeOf(cell.before);
}

std::string rowText(const TableRow& row, bool ofGroup) {
    std::vector<std::string> parts;
    if (!row.caption.empty()) {
        parts.push_back(codeOf(row.caption));
    }
    if (!row.name.empty()) {
        parts.push_back(cellText(row.name) + (ofGroup ? "" : ":"));
    }
    if (!row.value.empty() || !ofGroup) {
        parts.push_back((ofGroup ? "\u2192 " : "") + cellText(row.value));
    }
    return fmt::format("{}", fmt::join(parts, " "));
}

std::string withNotes(std::string title, const std::vector<std::string>& notes) {
    return notes.empty() ? title : fmt::format("{} ({})", title, fmt::join(notes, ", "));
}

std::vector<std::string> remarksOf(const EntryLabel& label) {
    const auto remarks = label.remarks();
    return {remarks.begin(), remarks.end()};
}

}  // namespace

std::string codeOf(std::u16string_view text) {
    if (text.empty()) {
        return "_empty_";
    }
    std::string shown =
        fl::i18n::ustring_to_utf8(shortened(visible(text), longestText, Measure::units));
    if (longestRunOfTicks(shown) >= longestFence) {
        shown = withoutTicks(shown);
    }
    const std::string fence(longestRunOfTicks(shown) + 1, '`');
    // A span of nothing but spaces is kept; others lose one at each end if both ends have one.
    const bool padded = shown.front() == '`' || shown.back() == '`' ||
                        (shown.front() == ' ' && shown.back() == ' ');
    const std::string_view space = padded ? " " : "";
    return fmt::format("{0}{1}{2}{1}{0}", fence, space, shown);
}

std::string targetOf(const EntryLabel& group) {
    std::vector<std::string> notes = remarksOf(group);
    if (group.downstreamType) {
        notes.insert(notes.begin(), codeOf(*group.downstreamType));
    }
    return withNotes(codeOf(group.downstream), notes);
}

std::string titleOf(const EntryLabel& label) {
    std::string title = label.kind == EntryKind::graph ? "The graph itself" : codeOf(label.id);
    if (label.oldID) {
        title += fmt::format(" \u2190 {}", codeOf(*label.oldID));
    }
    for (const TableRow& row : label.rows) {
        title += fmt::format(" {}{}", row.value.changed ? "" : std::string{signOf(row.edit), ' '},
                             cellText(row.value));
    }
    return withNotes(std::move(title), remarksOf(label));
}

std::string typesIn(const EntryTable& table) {
    std::map<std::u16string, std::size_t> counts;
    for (const TableRow& row : table.rows) {
        ++counts[row.caption];
    }
    std::vector<std::string> parts;
    parts.reserve(counts.size());
    for (const auto& [caption, count] : counts) {
        parts.push_back(count == 1 ? codeOf(caption)
                                   : fmt::format("{} \u00d7 {}", count, codeOf(caption)));
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

std::string rowsIn(const EntryTable& table, bool ofGroup, std::string_view indent) {
    std::string text;
    for (const TableRow& row : table.rows) {
        if (row.edit != EditType::unchanged) {
            fmt::format_to(std::back_inserter(text), "{}- {} {}\n", indent, nameOf(row.edit),
                           rowText(row, ofGroup));
        }
    }
    return text;
}

std::string textOf(const Statement& statement) {
    std::string text;
    if (statement.edit) {
        text = fmt::format("{} ", nameOf(*statement.edit));
    }
    for (const Phrase& phrase : statement.phrases) {
        switch (phrase.kind) {
            case Phrase::Kind::words:
                text += fl::i18n::ustring_to_utf8(phrase.text);
                break;
            case Phrase::Kind::name:
                text += codeOf(phrase.text);
                break;
            case Phrase::Kind::leadsTo:
                text += " \u2192 ";
                break;
        }
    }
    return text;
}

}  // namespace depcompare
