#include "reports/markdown/markdown_report.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "presentation/counts_table.h"
#include "presentation/ledger_text.h"
#include "reports/markdown/markdown_item.h"
#include "reports/markdown/markdown_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::Item;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using Entry = PresentedTree::Entry;

constexpr std::size_t manyItems = 12;
constexpr std::size_t bytesForEnding = 1000;

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
        if (!tree_.showsDifference()) {
            take(report_.summary.showsDifference ? "No visible differences.\n\n"
                                                 : "No differences.\n\n");
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
        writeHidden();
        if (!missing.empty()) {
            output_.print("**Cut for length.** Left out: {}.\n", fmt::join(missing, ", "));
        }
    }

  private:
    void sort(const Entry& entry) {
        const Item& item = anySide(tree_.compared(entry.match).edit);
        const bool group = std::holds_alternative<ParallelDependencies>(item);
        const bool graph = std::holds_alternative<std::shared_ptr<const Graph>>(item);
        const EditType edit = entry.match->getEditTypes().front();
        if (!graph && edit == EditType::rightOnly) {
            sections_[group ? addedGroups : addedFiles].entries.push_back(&entry);
        } else if (!graph && edit == EditType::leftOnly) {
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
        for (const auto& [kind, counts] : countsByKind(report_.summary)) {
            take(fmt::format("| {} | {} | {} | {} | {} |\n", kind, counts.added, counts.removed,
                             counts.changed, counts.unchanged));
        }
        take("\n");
    }

    /// Returns: how many had no room.
    std::size_t writeWarnings() {
        std::size_t missing = 0;
        for (std::size_t side = 0; side < report_.inputs.size(); ++side) {
            for (const std::string& warning : report_.ledger.sides[side].warnings) {
                const std::string text =
                    fmt::format("Warning: {}: {}\n\n", sourceOf(side),
                                markdownCode(fl::i18n::utf8_to_ustring(warning)));
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
        return markdownCode(fl::i18n::utf8_to_ustring(report_.inputs[side].source));
    }

    /// Returns: how many of the entries had room.
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
            std::string item = (written == 0 ? begin : std::string()) + markdownItem(tree_, *entry);
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

    void writeHidden() {
        for (const HiddenByFilter& hidden : report_.ledger.visibility.hidden) {
            if (hidden.entries.all() + hidden.rows != 0) {
                output_.print("Hidden by the {} filter: {}, {}.\n\n", titleOf(hidden.filter),
                              counted(hidden.entries.all(), "entry", "entries"),
                              counted(hidden.rows, "row", "rows"));
            }
        }
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
