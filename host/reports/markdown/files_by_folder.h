#pragma once
// The list of files by folder, with the groups of dependencies below them: as much as there is room
// for.
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "presentation/presented_tree.h"
#include "presentation/summary.h"

namespace depcompare {

/// What is listed, by kind and edit.
struct ListedCounts {
    EditCounts files;
    EditCounts groups;
    std::size_t folded = 0;  ///< groups in which only components differ, if those are not listed

    ListedCounts& operator+=(const ListedCounts& other);
    /// Returns: "2 added files, 1 changed link"; empty without any.
    [[nodiscard]] std::string description() const;
};

class FilesByFolder {
  public:
    using Entry = PresentedTree::Entry;

    struct Text {
        std::string markdown;
        std::size_t missingFiles = 0;   ///< counted at most, not named
        std::size_t missingGroups = 0;  ///< likewise
    };

    /// Lifetime: the tree outlives this.
    explicit FilesByFolder(const PresentedTree& tree) : tree_(tree) {}

    /// Adds the entry of the graph or of a file, which is listed if it differs visibly.
    void add(const Entry& entry);
    /// Adds a visible group of the file that was added last; lists it if it differs.
    void addGroup(const Entry& entry);

    /// Returns: how many files there are to list.
    [[nodiscard]] std::size_t itemCount() const;
    [[nodiscard]] ListedCounts counts() const;

    /// Returns: a line with counts per folder, below it the names of its files, below these their
    ///          groups. If there is no room for all, the groups of the last files go first, then
    ///          names, then folders.
    [[nodiscard]] Text text(std::size_t mostBytes) const;

  private:
    struct Item {
        const Entry* entry;
        bool isFile;                       // or else the graph
        bool differs;                      // by itself
        std::vector<const Entry*> groups;  // listed ones
        std::size_t folded = 0;

        [[nodiscard]] bool isListed() const { return differs || !groups.empty() || folded != 0; }
    };
    using Folders = std::map<std::u16string, std::vector<const Item*>>;

    [[nodiscard]] Folders folders() const;
    [[nodiscard]] ListedCounts countsOf(const Item& item) const;
    [[nodiscard]] std::string headOf(std::u16string_view folder,
                                     const std::vector<const Item*>& items) const;
    [[nodiscard]] std::string titleOfItem(const Item& item) const;
    [[nodiscard]] std::string lineOf(const Item& item) const;
    [[nodiscard]] std::string wholeOf(const Item& item) const;

    const PresentedTree& tree_;
    std::vector<Item> items_;  // in the order of the tree, unlisted ones included
};

}  // namespace depcompare
