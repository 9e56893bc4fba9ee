#include "reports/markdown/markdown_report.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "output/visible_text.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using Entry = PresentedTree::Entry;

constexpr std::size_t manyItems = 12;
constexpr std::size_t bytesForEnding = 1000;

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

/// Returns: a code span in UTF-8, in which nothing is markup, a mention or a link, and that stays on
///          its line; see `visible`. Very long text is shortened.
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
    return parts.empty() ? "" : fmt::format(": {}", fmt::join(parts, ", "));
}

std::string titleOf(const EntryLabel& label) {
    std::string title = label.kind == EntryKind::graph ? "The graph itself" : codeOf(label.id);
    std::vector<std::string> notes;
    if (label.kind == EntryKind::group) {
        title += fmt::format(" \u2192 {}", codeOf(label.downstream));
        if (label.downstreamType) {
            notes.push_back(codeOf(*label.downstreamType));
        }
    }
    if (label.oldID) {
        title += fmt::format(" \u2190 {}", codeOf(*label.oldID));
    }
    for (const std::string_view remark : label.remarks()) {
        notes.emplace_back(remark);
    }
    return notes.empty() ? title : fmt::format("{} ({})", title, fmt::join(notes, ", "));
}

/// Returns: an item of a list. One line for an entry of one side only, a group's with its dependency
///          types; for others the visible rows that differ below it.
std::string itemOf(const PresentedTree& tree, const PresentedTree::Entry& entry) {
    const EntryLabel label = labelOf(tree, entry.match);
    const bool isGroup = label.kind == EntryKind::group;
    const EntryTable table = tableOf(tree, entry.match);
    std::string text = "- " + titleOf(label);
    if (label.edit == EditType::rightOnly || label.edit == EditType::leftOnly) {
        return text + (isGroup ? typesIn(table) : "") + "\n";
    }
    text += "\n";
    for (const TableRow& row : table.rows) {
        if (row.edit != EditType::unchanged) {
            text += fmt::format("  - {} {}\n", nameOf(row.edit), rowText(row, isGroup));
        }
    }
    return text;
}

struct Section {
    std::string_view title;
    std::string_view one;  // as in "1 added file"
    std::string_view several;
    std::vector<const Entry*> entries;
};

enum Place : std::size_t { addedFiles, removedFiles, addedGroups, removedGroups, changed };

class MarkdownReport {
  public:
    MarkdownReport(const Report& report, std::size_t mostBytes, Output& output)
        : report_(report), tree_(*report.tree), left_(mostBytes), output_(output) {
        for (const Entry& entry : tree_.entries()) {
            if (entry.visible != 0) {
                sort(entry);
            }
        }
    }

    void write() {
        writeCounts();
        if (const std::string_view verdict = report_.verdict(); !verdict.empty()) {
            take(fmt::format("{}\n\n", verdict));
        }
        std::vector<std::string> missing;
        if (const std::size_t more = writeWarnings(); more != 0) {
            missing.push_back(counted(more, "warning", "warnings"));
        }
        for (const Section& section : sections_) {
            const std::size_t written = write(section);
            if (const std::size_t more = section.entries.size() - written; more != 0) {
                missing.push_back(counted(more, section.one, section.several));
            }
        }
        for (const std::string& line : hiddenLines(report_.ledger.visibility)) {
            output_.print("{}.\n\n", line);
        }
        if (!missing.empty()) {
            output_.print("**Cut for length.** Left out: {}.\n", fmt::join(missing, ", "));
        }
    }

  private:
    void sort(const Entry& entry) {
        const EntryKind kind = kindOf(anySide(tree_.compared(entry.match).edit));
        const bool group = kind == EntryKind::group;
        const EditType edit = entry.match->getEditTypes().front();
        if (kind != EntryKind::graph && edit == EditType::rightOnly) {
            sections_[group ? addedGroups : addedFiles].entries.push_back(&entry);
        } else if (kind != EntryKind::graph && edit == EditType::leftOnly) {
            sections_[group ? removedGroups : removedFiles].entries.push_back(&entry);
        } else if (edit == EditType::changed || differsInRows(entry)) {
            sections_[changed].entries.push_back(&entry);
        }
    }

    [[nodiscard]] bool differsInRows(const Entry& entry) const {
        const auto metrics = tree_.metrics(entry.match);
        return metrics && !metrics->areZero();
    }

    void writeCounts() {
        take(fmt::format("### Dependencies: {} \u2192 {}\n\n", sourceOf(0), sourceOf(1)));
        take("| | added | removed | changed | unchanged |\n|---|--:|--:|--:|--:|\n");
        for (const auto& [name, title, counts] : report_.summary.byKind()) {
            take(fmt::format("| {} | {} | {} | {} | {} |\n", title, counts.added, counts.removed,
                             counts.changed, counts.unchanged));
        }
        take("\n");
    }

    /// Returns: how many did not fit.
    std::size_t writeWarnings() {
        std::size_t missing = 0;
        for (std::size_t side = 0; side < report_.inputs.size(); ++side) {
            for (const std::string& warning : report_.ledger.sides[side].warnings) {
                const std::string text = fmt::format("Warning: {}: {}\n\n", sourceOf(side),
                                                     codeOf(fl::i18n::utf8_to_ustring(warning)));
                if (text.size() + bytesForEnding > left_) {
                    ++missing;
                } else {
                    take(text);
                }
            }
        }
        return missing;
    }

    [[nodiscard]] std::string sourceOf(std::size_t side) const {
        return codeOf(fl::i18n::utf8_to_ustring(report_.inputs[side].source));
    }

    /// Returns: how many of the entries fitted.
    std::size_t write(const Section& section) {
        constexpr std::string_view end = "\n</details>\n\n";
        const std::size_t count = section.entries.size();
        if (count == 0 || isFull_) {
            return 0;
        }
        const std::string begin =
            fmt::format("<details{}><summary>{}: {}</summary>\n\n",
                        count <= manyItems ? " open" : "", section.title, count);
        std::size_t written = 0;
        for (const Entry* entry : section.entries) {
            std::string item = (written == 0 ? begin : std::string()) + itemOf(tree_, *entry);
            if (item.size() + end.size() + bytesForEnding > left_) {
                isFull_ = true;
                break;
            }
            take(item);
            ++written;
        }
        if (written != 0) {
            take(end);
        }
        return written;
    }

    void take(std::string_view text) {
        output_.write(text);
        left_ -= std::min(left_, text.size());
    }

    const Report& report_;
    const PresentedTree& tree_;
    std::size_t left_;
    bool isFull_ = false;
    Output& output_;
    std::array<Section, 5> sections_{
        {{"Added files", "added file", "added files", {}},
         {"Removed files", "removed file", "removed files", {}},
         {"Added groups of dependencies", "added group", "added groups", {}},
         {"Removed groups of dependencies", "removed group", "removed groups", {}},
         {"Changed", "changed entry", "changed entries", {}}}};
};

}  // namespace

void writeMarkdownReport(const Report& report, std::optional<std::size_t> mostBytes,
                         Output& output) {
    MarkdownReport(report, mostBytes.value_or(std::numeric_limits<std::size_t>::max()), output)
        .write();
}

}  // namespace depcompare
