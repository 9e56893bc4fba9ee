#pragma once
// A pair of large dependency graphs made from a seed, as numbers: which files there are, what
// depends on what, and what changes between the sides. The same on every machine and compiler.
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace depcompare::bench {

/// One dependency between two files. A component is a number within its file, see `componentName`.
struct Link {
    std::uint32_t upstream = 0;
    std::uint32_t downstream = 0;
    std::uint8_t type = 0;  ///< index into `dependencyTypes`
    std::uint8_t upstreamComponent = 0;
    std::uint8_t downstreamComponent = 0;

    friend auto operator<=>(const Link&, const Link&) = default;
};

/// One state of the project.
struct GeneratedSide {
    std::vector<std::uint32_t> files;  ///< in the order in which they are written
    std::vector<Link> links;           ///< likewise; those that leave one file stand together
};

/// How many items of one kind are on one side only, and on both.
struct PairCounts {
    std::size_t removed = 0;
    std::size_t added = 0;
    std::size_t common = 0;
    std::size_t changed = 0;  ///< of the common ones, those that differ

    [[nodiscard]] std::size_t total() const noexcept { return removed + added + common; }
    friend bool operator==(const PairCounts&, const PairCounts&) = default;
};

/// A group is all dependencies from one file to one other.
struct ItemCounts {
    PairCounts files;
    PairCounts groups;

    /// Files and groups, those on both sides counted once.
    [[nodiscard]] std::size_t entries() const noexcept { return files.total() + groups.total(); }
    friend bool operator==(const ItemCounts&, const ItemCounts&) = default;
};

struct GeneratedPair {
    static constexpr std::uint8_t noProperty = 0xff;

    std::vector<std::uint8_t> changedProperty;  ///< by file: what differs on the right, or none
    std::array<GeneratedSide, 2> sides;         ///< left, right
    ItemCounts expected;                        ///< what a comparison must find
};

/// Tells whether the value of `propertyKeys[property]` is another one than on the left side.
[[nodiscard]] inline bool isChanged(const GeneratedPair& pair, std::size_t side, std::uint32_t file,
                                    std::size_t property) {
    return side == 1 && pair.changedProperty[file] == property;
}

/// Makes a left side with `files` files of about twelve dependencies each, and a right side that
/// differs from it in about a twentieth.
///
/// Requires: 100 <= files <= 500,000.
[[nodiscard]] GeneratedPair generatePair(std::uint32_t files, std::uint64_t seed = 1);

/// Returns: the links from the first one's file to the first one's target.
/// Requires: not empty.
[[nodiscard]] std::span<const Link> firstGroup(std::span<const Link> links);

}  // namespace depcompare::bench
