#include "link_maker.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "generated_text.h"

namespace depcompare::bench {

namespace {

constexpr std::size_t largestDegree = 2600;

std::uint8_t drawType(Random& random) {
    constexpr std::array<std::uint8_t, 10> types{0, 0, 1, 1, 1, 1, 1, 1, 2, 2};
    static_assert(types.back() + 1 == dependencyTypes.size());
    return types[random.below(types.size())];
}

std::uint8_t drawComponent(Random& random) {
    return static_cast<std::uint8_t>(random.below(initialComponents));
}

}  // namespace

// Pareto with the exponent 64/37. The power is made of square roots, which are exact to the last
// bit everywhere.
std::size_t degreeAt(double tail) {
    const double root2 = std::sqrt(1.0 / tail);
    const double root16 = std::sqrt(std::sqrt(std::sqrt(root2)));
    const double root64 = std::sqrt(std::sqrt(root16));
    return std::min(static_cast<std::size_t>(5.36 * root2 * root16 * root64), largestDegree);
}

Popularity::Popularity(std::vector<std::uint32_t> filesByPopularity)
    : files_(std::move(filesByPopularity)), cumulated_(files_.size()) {
    std::uint64_t sum = 0;
    for (std::size_t rank = 0; rank < files_.size(); ++rank) {
        sum += (std::uint64_t{1} << 40U) / (rank + 1);
        cumulated_[rank] = sum;
    }
}

std::uint32_t Popularity::draw(Random& random) const {
    const std::uint64_t at = random.below(cumulated_.back());
    const auto found = std::ranges::upper_bound(cumulated_, at);
    return files_[static_cast<std::size_t>(found - cumulated_.begin())];
}

LinkMaker::LinkMaker(const Popularity& popularity, std::size_t allFiles, Random& random)
    : popularity_(popularity),
      random_(random),
      excluded_(allFiles, false),
      lastUser_(allFiles, std::numeric_limits<std::uint32_t>::max()) {}

void LinkMaker::addFile(std::uint32_t file, std::size_t degree, std::vector<Link>& links) {
    lastUser_[file] = file;
    while (degree > 0) {
        const std::uint32_t target = popularity_.draw(random_);
        if (lastUser_[target] == file || excluded_[target]) {
            continue;
        }
        lastUser_[target] = file;
        degree -= addGroup(file, target, degree, links);
    }
}

std::size_t LinkMaker::addGroup(std::uint32_t file, std::uint32_t target, std::size_t atMost,
                                std::vector<Link>& links) {
    // One of four has a further one, and so on, as far as the file has them: 1.3 a group.
    std::size_t size = 1;
    while (size < atMost && random_.below(4) == 0) {
        ++size;
    }
    const auto first = static_cast<std::ptrdiff_t>(links.size());
    while (links.size() < static_cast<std::size_t>(first) + size) {
        const std::uint8_t type = drawType(random_);
        const std::uint8_t upstreamComponent = drawComponent(random_);
        const Link link{file, target, type, upstreamComponent, drawComponent(random_)};
        if (std::find(links.begin() + first, links.end(), link) == links.end()) {
            links.push_back(link);
        }
    }
    return size;
}

}  // namespace depcompare::bench
