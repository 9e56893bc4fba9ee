#pragma once
// Draws the dependencies of files: a few files have many, and a few are what most depend on.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "generator.h"
#include "random.h"

namespace depcompare::bench {

/// Components that a file has from the start; changes bring in those from here on.
inline constexpr std::uint8_t initialComponents = 8;

/// Returns: the number of dependencies that a share of `tail` of all files exceeds.
/// Requires: 0 < tail < 1.
[[nodiscard]] std::size_t degreeAt(double tail);

/// Draws files so that the k-th one given comes up in proportion to 1 / k.
class Popularity {
  public:
    /// Requires: `filesByPopularity` not empty.
    explicit Popularity(std::vector<std::uint32_t> filesByPopularity);

    [[nodiscard]] std::uint32_t draw(Random& random) const;

  private:
    std::vector<std::uint32_t> files_;
    std::vector<std::uint64_t> cumulated_;
};

class LinkMaker {
  public:
    /// Requires: every file number is below `allFiles`; both references outlive this object.
    LinkMaker(const Popularity& popularity, std::size_t allFiles, Random& random);

    /// Leaves the file out as a target of what follows.
    void exclude(std::uint32_t file) { excluded_[file] = true; }

    /// Appends `degree` dependencies that leave `file`, group by group.
    ///
    /// Requires: called once a file; there are enough targets.
    void addFile(std::uint32_t file, std::size_t degree, std::vector<Link>& links);

    /// Appends a group of at most `atMost` different dependencies.
    ///
    /// Returns: their number.
    std::size_t addGroup(std::uint32_t file, std::uint32_t target, std::size_t atMost,
                         std::vector<Link>& links);

  private:
    const Popularity& popularity_;
    Random& random_;
    std::vector<bool> excluded_;
    std::vector<std::uint32_t> lastUser_;  // by target
};

}  // namespace depcompare::bench
