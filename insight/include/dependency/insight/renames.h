#pragma once
// Which removed file probably became which added one.
//
// A pair's odds are 1 / max(removed, added), times one factor per kind of evidence: how often a true
// pair shows it by how often any other pair does. docs/insight.md has the formula.
//
// - Digest: a property whose key ends in checksum, hash, digest, md5 or sha with or without a number,
//   with an equal value that occurs once on either side among these files.
// - Name: whether the last components of the displayed IDs are equal, or else their endings.
// - Folder: whether both are in one folder, or in folders between which others moved, too: those
//   with equal last components, and those paired already.
// - Neighbours: the share of common ones among those of either, rare ones weighing more, against the
//   best that certainly other files do; with those that moved along if the folder moved as a whole.
// - Properties: each other property of both, equal or not, rare values weighing more.
//
// The score is what these odds are of all odds that either of the two files has, the odds of no
// partner at all (1) included. The surest pairs are taken first, and then are evidence themselves.
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <dependency/insight/export.h>
#include <dependency/insight/link_graph.h>

namespace dependency::insight {

/// Folders, what they have in common at their ends left out, and how many other pairs moved alike.
struct FolderMove {
    std::u16string left;
    std::u16string right;
    std::size_t others = 0;

    friend bool operator==(const FolderMove&, const FolderMove&) = default;
};

struct RenameEvidence {
    std::optional<std::u16string> digest;  ///< the key of the property
    bool name = false;                     ///< equal last components
    std::optional<FolderMove> folder;      ///< if others moved alike
    std::size_t sharedNeighbours = 0;      ///< common nodes or pairs, per direction of the link
    BySide<std::size_t> neighbours;        ///< all of either file's
    std::size_t equalProperties = 0;       ///< digests left out
    std::size_t properties = 0;            ///< keys of either

    friend bool operator==(const RenameEvidence&, const RenameEvidence&) = default;
};

struct Rename {
    NodePair nodes;
    double score = 0;        ///< in [0, 1], in steps of a millionth; 1 for a stated pair
    bool ambiguous = false;  ///< another pair of one of the two scores within 0.1
    bool stated = false;     ///< by the caller
    RenameEvidence evidence;

    [[nodiscard]] bool probable() const noexcept { return score >= 0.8; }
    friend bool operator==(const Rename&, const Rename&) = default;
};

struct RenameOptions {
    std::u16string separator = u"/";       ///< of the components of IDs
    std::vector<NodePair> stated = {};     ///< pairs that hold, whatever the evidence
    std::vector<NodePair> forbidden = {};  ///< pairs that are never made
};

/// Pairs files of the left side alone with files of the right side alone, each at most once.
///
/// Requires: a separator that is not empty; each left node of `stated` is on the left only, each
///           right one on the right only, and none occurs twice.
/// Returns:  the stated pairs, and those with a score of 0.5 or more.
/// Order:    by left node.
/// Throws:   `std::invalid_argument` for others.
/// Complexity: linear in the links of nodes near the removed and added files; candidates come from
///           an index of digests, last components, folder moves and neighbours that few files have.
[[nodiscard]] DEPENDENCY_INSIGHT_EXPORT std::vector<Rename> findRenames(
    const LinkGraph& graph, const RenameOptions& options = {});

}  // namespace dependency::insight
