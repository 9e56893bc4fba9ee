#include "reports/markdown/files_by_folder.h"

#include <algorithm>
#include <utility>

#include <comparisons/edit_type.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/ledger_text.h"
#include "reports/markdown/markdown_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;

constexpr std::size_t mostFolders = 60;
constexpr std::size_t deepestFolder = 3;

EditType editOf(const PresentedTree::Entry& entry) {
    return entry.match->getEditTypes().front();
}

/// Returns: the first folders of a path, its last component left out; "." if there is none.
std::u16string_view folderOf(std::u16string_view path, std::size_t depth) {
    std::size_t end = 0;
    for (std::size_t next = path.find(u'/'); depth != 0 && next != path.npos;
         next = path.find(u'/', next + 1)) {
        end = next;
        --depth;
    }
    return end == 0 ? u"." : path.substr(0, end);
}

void describe(const EditCounts& counts, std::string_view one, std::string_view several,
              std::vector<std::string>& parts) {
    for (const auto& [count, edit] : {std::pair(counts.added, EditType::rightOnly),
                                      std::pair(counts.removed, EditType::leftOnly),
                                      std::pair(counts.changed, EditType::changed)}) {
        if (count != 0) {
            parts.push_back(
                fmt::format("{} {} {}", count, nameOf(edit), count == 1 ? one : several));
        }
    }
}

std::string foldedText(std::size_t count) {
    return counted(count, "link", "links") + " in which only components differ";
}

}  // namespace

ListedCounts& ListedCounts::operator+=(const ListedCounts& other) {
    files += other.files;
    groups += other.groups;
    folded += other.folded;
    return *this;
}

std::string ListedCounts::description() const {
    std::vector<std::string> parts;
    describe(files, "file", "files", parts);
    describe(groups, "link", "links", parts);
    if (folded != 0) {
        parts.push_back(foldedText(folded));
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

void FilesByFolder::add(const Entry& entry) {
    bool differs = false;
    if (entry.visible != 0) {
        const auto metrics = tree_.metrics(entry.match);
        differs = editOf(entry) != EditType::unchanged || (metrics && !metrics->areZero());
    }
    items_.push_back(
        {.entry = &entry,
         .isFile = kindOf(anySide(tree_.compared(entry.match).edit)) == EntryKind::file,
         .differs = differs,
         .groups = {},
         .folded = 0});
}

void FilesByFolder::addGroup(const Entry& entry) {
    const EntryLabel label = labelOf(tree_, entry.match);
    if (isFolded(label, tree_.filters())) {
        ++items_.back().folded;
    } else if (label.edit != EditType::unchanged) {
        items_.back().groups.push_back(&entry);
    }
}

std::size_t FilesByFolder::itemCount() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(items_, [](const Item& item) { return item.isListed(); }));
}

ListedCounts FilesByFolder::counts() const {
    ListedCounts counts;
    for (const Item& item : items_) {
        counts += countsOf(item);
    }
    return counts;
}

FilesByFolder::Text FilesByFolder::text(std::size_t mostBytes) const {
    struct Piece {
        const Item* item;
        std::string text;
        bool isWhole;
    };
    std::size_t room = mostBytes;
    const auto fits = [&room](std::size_t bytes) {
        const bool does = bytes <= room;
        room -= does ? bytes : 0;
        return does;
    };
    const Folders all = folders();
    std::vector<std::pair<std::string, std::vector<Piece>>> written;  // heads, files
    for (const auto& [folder, items] : all) {
        // The counts of the only folder are those of the whole.
        std::string head = all.size() == 1 ? std::string() : headOf(folder, items);
        if (!fits(head.size() + 1)) {
            break;
        }
        written.emplace_back(std::move(head), std::vector<Piece>());
    }
    Text text;
    bool isFull = false;
    auto place = written.begin();
    for (const auto& [folder, items] : all) {
        isFull = isFull || place == written.end();
        for (const Item* item : items) {
            std::string line = isFull ? std::string() : lineOf(*item);
            isFull = isFull || !fits(line.size());
            if (isFull) {
                text.missingFiles += item->isFile ? 1 : 0;
                text.missingGroups += item->groups.size();
            } else {
                place->second.push_back({.item = item, .text = std::move(line), .isWhole = false});
            }
        }
        place += place == written.end() ? 0 : 1;
    }
    for (auto& [head, pieces] : written) {
        text.markdown += head;
        for (Piece& piece : pieces) {
            // A line is never longer than the same with more below it.
            std::string whole = wholeOf(*piece.item);
            if (fits(whole.size() - std::min(whole.size(), piece.text.size()))) {
                piece.text = std::move(whole);
            } else {
                text.missingGroups += piece.item->groups.size();
            }
            text.markdown += piece.text;
        }
        if (!pieces.empty()) {
            text.markdown += '\n';
        }
    }
    return text;
}

FilesByFolder::Folders FilesByFolder::folders() const {
    for (std::size_t depth = deepestFolder;; --depth) {
        Folders folders;
        for (const Item& item : items_) {
            if (item.isListed()) {
                const EntryLabel label = labelOf(tree_, item.entry->match);
                folders[item.isFile ? std::u16string(folderOf(label.id, depth)) : u""].push_back(
                    &item);
            }
        }
        if (depth == 1 || folders.size() <= mostFolders) {
            return folders;
        }
    }
}

ListedCounts FilesByFolder::countsOf(const Item& item) const {
    ListedCounts counts;
    if (item.differs && item.isFile) {
        counts.files.count(editOf(*item.entry));
    }
    for (const Entry* group : item.groups) {
        counts.groups.count(editOf(*group));
    }
    counts.folded = item.folded;
    return counts;
}

std::string FilesByFolder::headOf(std::u16string_view folder,
                                  const std::vector<const Item*>& items) const {
    if (folder.empty()) {
        return {};
    }
    ListedCounts counts;
    for (const Item* item : items) {
        counts += countsOf(*item);
    }
    return fmt::format("**{}**: {}\n\n", codeOf(folder), counts.description());
}

std::string FilesByFolder::titleOfItem(const Item& item) const {
    const EntryLabel label = labelOf(tree_, item.entry->match);
    const bool says = item.isFile && item.differs;
    return fmt::format("- {}{}{}", says ? nameOf(label.edit) : "", says ? " " : "", titleOf(label));
}

std::string FilesByFolder::lineOf(const Item& item) const {
    ListedCounts below = countsOf(item);
    below.files = {};
    const std::string what = below.description();
    return fmt::format("{}{}{}\n", titleOfItem(item), what.empty() ? "" : ": ", what);
}

std::string FilesByFolder::wholeOf(const Item& item) const {
    std::string text = titleOfItem(item) + "\n";
    const bool isAlone = isOneSided(editOf(*item.entry));
    if (item.differs && !isAlone) {
        text += rowsIn(tableOf(tree_, item.entry->match), false, "  ");
    }
    for (const Entry* group : item.groups) {
        const EntryLabel label = labelOf(tree_, group->match);
        const EntryTable table = tableOf(tree_, group->match);
        text += fmt::format("  - {}{}{}", isAlone ? "" : nameOf(label.edit), isAlone ? "" : " ",
                            targetOf(label));
        text += isOneSided(label.edit) ? fmt::format(": {}\n", typesIn(table))
                                       : fmt::format("\n{}", rowsIn(table, true, "    "));
    }
    if (item.folded != 0) {
        text += fmt::format("  - {}\n", foldedText(item.folded));
    }
    return text;
}

}  // namespace depcompare
