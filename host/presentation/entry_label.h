#pragma once
// What reports say of an entry besides its rows, as data for each report to render.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <comparisons/edit_type.h>

#include "presentation/enabled_filters.h"
#include "presentation/entry_table.h"
#include "presentation/presented_tree.h"

namespace depcompare {

/// Names are those of the left side if there is one; IDs are as the files wrote them.
struct EntryLabel {
    ::comparisons::EditType edit = ::comparisons::EditType::unchanged;
    EntryKind kind = EntryKind::graph;
    std::u16string id;          ///< of a file, or of the file whose dependencies a group holds
    std::u16string downstream;  ///< of a group: the ID of what it leads to
    std::optional<std::u16string> downstreamType;  ///< of a group that does not lead to a file
    bool onlyEndsChanged = false;                  ///< a changed group without a changed row
    /// A changed group with equal ends and as many dependencies of each type on both sides.
    bool onlyComponentsChanged = false;
    bool moved = false;
    std::optional<std::u16string> oldID;  ///< of a file that was renamed, on the left

    std::vector<TableRow> rows;  ///< if the label tells them; by their values

    /// Returns: the reason for the edit if no row shows it, and whether the entry has moved.
    [[nodiscard]] std::vector<std::string_view> remarks() const;
};

[[nodiscard]] EntryLabel labelOf(const PresentedTree& tree, PresentedTree::Match match);

/// Returns: "graph", "file" or "group".
[[nodiscard]] std::string_view nameOf(EntryKind kind);

/// Returns: whether reports only count the entry: a group in which only components differ, unless the
///          filters show details.
[[nodiscard]] bool isFolded(const EntryLabel& label, const EnabledFilters& filters);

/// Returns: whether the entry was added or removed.
[[nodiscard]] bool isOneSided(::comparisons::EditType type);

/// Returns: "added", "removed", "changed" or "unchanged".
[[nodiscard]] std::string_view nameOf(::comparisons::EditType type);

/// Returns: + - ~ or =
[[nodiscard]] char signOf(::comparisons::EditType type);

}  // namespace depcompare
