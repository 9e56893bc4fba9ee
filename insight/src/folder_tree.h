#pragma once
// Folders as numbers, so that the depth of a path costs nothing once all paths are read.
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// The folders that IDs are in, and all folders above these.
///
///     a/b/x.c, a/y.c    folders: "" 0, "a" 1, "a/b" 2;  path(folderOf(0)): 0, 1, 2
///
/// A separator at the very beginning is part of the first component.
class FolderTree {
  public:
    using Text = std::u16string_view;

    FolderTree() = default;
    /// Requires:   IDs in ascending order, valid as long as the tree; a separator that is not empty.
    /// Complexity: linear in the text, but for sorts of the components, and of the folders by their
    ///             last components.
    FolderTree(const std::vector<Text>& ids, Text separator);

    /// Returns: the place of the ID's folder among those that IDs are in, not its number.
    [[nodiscard]] Number folderOf(std::size_t id) const { return places_[id]; }
    [[nodiscard]] std::size_t placeCount() const { return starts_.size() - 1; }
    [[nodiscard]] std::size_t folderCount() const { return texts_.size(); }
    [[nodiscard]] Text text(Number folder) const { return texts_[folder]; }

    /// Returns: the numbers of the folders from the top one, which has no name, to the one at a place.
    [[nodiscard]] std::span<const Number> path(Number place) const {
        return {paths_.data() + starts_[place], starts_[place + 1] - starts_[place]};
    }
    /// Returns: how many last components two places have in common. The places of all folders that
    ///          end alike adjoin.
    /// Complexity: constant.
    [[nodiscard]] std::size_t commonEnd(Number a, Number b) const;

    /// Returns: the number of the folder that is left of a place without its last components.
    [[nodiscard]] Number withoutEnd(Number place, std::size_t components) const {
        const auto folders = path(place);
        return folders[folders.size() - 1 - components];
    }

  private:
    void addFolder(std::span<const Number> path);
    void sortByEnd(const std::vector<Number>& components);

    std::vector<Text> texts_;          // by number
    std::vector<Number> places_;       // by ID
    std::vector<std::size_t> starts_;  // of paths, by place
    std::vector<Number> paths_;
    // [k][i]: the least number of last components in common with the place before, of the 2^k places
    // from i on.
    std::vector<std::vector<Number>> common_;
};

}  // namespace dependency::insight
