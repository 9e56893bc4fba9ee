#include "reports/markdown/markdown_report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <comparisons/edit_type.h>
#include <comparisons/side.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "presentation/at_large.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"
#include "reports/markdown/files_by_folder.h"
#include "reports/markdown/markdown_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using dependency::comparisons::ParallelDependencies;
using Entry = PresentedTree::Entry;

constexpr std::size_t manyItems = 12;
constexpr std::size_t bytesForEnding = 1000;
constexpr std::string_view endOfDetails = "\n</details>\n\n";

std::string beginOfDetails(std::size_t items, std::string_view title) {
    return fmt::format("<details{}><summary>{}</summary>\n\n", items <= manyItems ? " open" : "",
                       title);
}

/// Groups that are listed before all else.
struct Section {
    std::string_view title;
    std::vector<const Entry*> entries;
};

enum Place : std::size_t { rewiredAdded, rewiredRemoved, removedTargets };

class MarkdownReport {
  public:
    MarkdownReport(const Report& report, std::size_t mostBytes, Output& output)
        : report_(report), tree_(*report.tree), files_(tree_), left_(mostBytes), output_(output) {
        findNodes();
        sortEntries();
    }

    void write() {
        writeHead();
        writeWarnings();
        writeAtLarge();
        for (const Section& section : sections_) {
            write(section);
        }
        writeFiles();
        for (const std::string& line : hiddenLines(report_.ledger.visibility)) {
            output_.print("{}.\n\n", line);
        }
        writeLeftOut();
        writeMissing();
    }

  private:
    void findNodes() {
        for (const auto side : ::comparisons::sides) {
            for (const auto& node : report_.inputs[indexOf(side)].graph->getNodes()) {
                nodes_[indexOf(side)].emplace_back(node->getID());
            }
            std::ranges::sort(nodes_[indexOf(side)]);
        }
    }

    void sortEntries() {
        for (const Entry& entry : tree_.entries()) {
            const auto& item = anySide(tree_.compared(entry.match).edit);
            if (kindOf(item) != EntryKind::group) {
                files_.add(entry);
            } else if (entry.visible != 0) {
                const auto place = placeOf(entry, std::get<ParallelDependencies>(item));
                if (place) {
                    sections_[*place].entries.push_back(&entry);
                } else {
                    files_.addGroup(entry);
                }
            }
        }
    }

    /// Returns: nothing for a group that is listed with its file.
    [[nodiscard]] std::optional<Place> placeOf(const Entry& entry,
                                               const ParallelDependencies& group) const {
        const EditType edit = entry.match->getEditTypes().front();
        const EditType editOfFile = tree_.entries()[entry.parent].match->getEditTypes().front();
        if (!isOneSided(edit) || isOneSided(editOfFile)) {
            return std::nullopt;
        }
        const auto& others = nodes_[edit == EditType::rightOnly ? 0 : 1];
        const bool hasBothEnds =
            std::ranges::binary_search(others, std::u16string_view(group.downstream->getID()));
        if (edit == EditType::leftOnly) {
            return hasBothEnds ? rewiredRemoved : removedTargets;
        }
        return hasBothEnds ? std::optional(rewiredAdded) : std::nullopt;
    }

    void writeHead() {
        take(fmt::format("### Dependencies: {} \u2192 {}\n\n", sourceOf(0), sourceOf(1)));
        take(fmt::format("{}\n\n", verdictOf(report_)));
        for (const std::string& warning : report_.ledger.warnings) {
            writeWarning(fmt::format("Warning: {}.\n\n", warning));
        }
        take("| | added | removed | changed | unchanged |\n|---|--:|--:|--:|--:|\n");
        for (const auto& [name, title, counts] : report_.summary.byKind()) {
            take(fmt::format("| {} | {} | {} | {} | {} |\n", title, counts.added, counts.removed,
                             counts.changed, counts.unchanged));
        }
        take("\n");
    }

    void writeWarnings() {
        for (std::size_t side = 0; side < report_.inputs.size(); ++side) {
            for (const std::string& warning : report_.ledger.sides[side].warnings) {
                writeWarning(fmt::format("Warning: {}: {}\n\n", sourceOf(side),
                                         codeOf(fl::i18n::utf8_to_ustring(warning))));
            }
        }
    }

    void writeWarning(const std::string& text) {
        if (text.size() > room()) {
            ++missingWarnings_;
        } else {
            take(text);
        }
    }

    [[nodiscard]] std::string sourceOf(std::size_t side) const {
        return codeOf(fl::i18n::utf8_to_ustring(report_.inputs[side].source));
    }

    void writeAtLarge() {
        std::vector<Topic> topics = atLarge(report_);
        const auto news = std::stable_partition(topics.begin(), topics.end(),
                                                [](const Topic& topic) { return topic.isNews; });
        const std::span<const Topic> rest(news, topics.end());
        for (const Topic& topic : std::span(topics.begin(), news)) {
            write(topic);
        }
        const std::string_view begin = "<details><summary>More at large</summary>\n\n";
        if (rest.empty() || begin.size() + endOfDetails.size() > room()) {
            return;
        }
        take(begin);
        for (const Topic& topic : rest) {
            write(topic);
        }
        take(endOfDetails.substr(1));
    }

    /// Leaves room for the end of the details.
    void write(const Topic& topic) {
        std::string text = topic.title.empty() ? "" : fmt::format("**{}**\n\n", topic.title);
        const auto add = [&](std::string_view statement) {
            text += fmt::format("- {}\n", statement);
            const bool fits = text.size() + 1 + endOfDetails.size() <= room();
            if (fits) {
                take(std::exchange(text, {}));
            }
            return fits;
        };
        std::size_t more = topic.more;
        bool isFull = false;
        for (const Statement& statement : topic.statements) {
            isFull = isFull || !add(textOf(statement));
            more += isFull ? 1 : 0;
        }
        if (more != 0 && !isFull) {
            isFull = !add(fmt::format("{} more (`{}`)", more, howToSeeMore));
        }
        missingStatements_ += isFull ? more : 0;
        take("\n");
    }

    void write(const Section& section) {
        std::string text = beginOfDetails(
            section.entries.size(), fmt::format("{}: {}", section.title, section.entries.size()));
        std::size_t written = 0;
        for (const Entry* entry : section.entries) {
            const EntryLabel label = labelOf(tree_, entry->match);
            text += fmt::format("- {} \u2192 {}: {}\n", codeOf(label.id), targetOf(label),
                                typesIn(tableOf(tree_, entry->match)));
            if (text.size() + endOfDetails.size() > room()) {
                break;
            }
            take(std::exchange(text, {}));
            ++written;
        }
        if (written != 0) {
            take(endOfDetails);
        }
        missingGroups_ += section.entries.size() - written;
    }

    void writeFiles() {
        if (files_.itemCount() == 0) {
            return;
        }
        const std::string what = files_.counts().description();
        const std::string begin =
            beginOfDetails(files_.itemCount(), what.empty() ? "Properties" : "By folder: " + what);
        const std::size_t around = begin.size() + endOfDetails.size();
        const FilesByFolder::Text text = files_.text(room() - std::min(room(), around));
        if (!text.markdown.empty()) {
            take(begin);
            take(text.markdown);
            take(endOfDetails.substr(1));
        }
        missingFiles_ += text.missingFiles;
        missingGroups_ += text.missingGroups;
    }

    void writeLeftOut() {
        for (std::size_t side = 0; side < report_.inputs.size(); ++side) {
            const std::string line = leftOutLine(report_.ledger.sides[side], LeftOutParts::all);
            if (!line.empty()) {
                output_.print("{}: {}.\n\n", side == 0 ? "Left" : "Right", line);
            }
        }
    }

    void writeMissing() {
        std::vector<std::string> missing;
        if (missingWarnings_ != 0) {
            missing.push_back(counted(missingWarnings_, "warning", "warnings"));
        }
        if (missingStatements_ != 0) {
            missing.push_back(counted(missingStatements_, "statement", "statements"));
        }
        if (missingFiles_ != 0) {
            missing.push_back(counted(missingFiles_, "file", "files"));
        }
        if (missingGroups_ != 0) {
            missing.push_back(counted(missingGroups_, "link", "links"));
        }
        if (!missing.empty()) {
            output_.print("**Cut for length.** Not shown: {}.\n", fmt::join(missing, ", "));
        }
    }

    /// Returns: how many bytes there are before the ending.
    [[nodiscard]] std::size_t room() const { return left_ - std::min(left_, bytesForEnding); }

    void take(std::string_view text) {
        output_.write(text);
        left_ -= std::min(left_, text.size());
    }

    const Report& report_;
    const PresentedTree& tree_;
    std::array<std::vector<std::u16string_view>, 2> nodes_;  // IDs, by side, ascending
    std::array<Section, 3> sections_{{{"Added links between nodes of both sides", {}},
                                      {"Removed links between nodes of both sides", {}},
                                      {"Removed links that led to removed nodes", {}}}};
    FilesByFolder files_;
    std::size_t missingWarnings_ = 0;
    std::size_t missingStatements_ = 0;  // of what happened at large
    std::size_t missingFiles_ = 0;
    std::size_t missingGroups_ = 0;
    std::size_t left_;
    Output& output_;
};

}  // namespace

void writeMarkdownReport(const Report& report, std::size_t mostBytes, Output& output) {
    MarkdownReport(report, mostBytes, output).write();
}

}  // namespace depcompare
