#include "generator.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "generated_text.h"
#include "link_maker.h"
#include "random.h"

namespace depcompare::bench {

namespace {

constexpr std::uint8_t renamedComponents = initialComponents;
constexpr std::uint8_t introducedComponents = 2 * initialComponents;
constexpr std::size_t incomingGroupsOfAddedFile = 3;

std::vector<std::uint32_t> numbers(std::uint32_t first, std::uint32_t last) {
    std::vector<std::uint32_t> all(last - first);
    std::iota(all.begin(), all.end(), first);
    return all;
}

std::vector<std::uint32_t> shuffledNumbers(std::uint32_t count, Random& random) {
    std::vector<std::uint32_t> all = numbers(0, count);
    random.shuffle(all);
    return all;
}

std::size_t groupCount(std::span<const Link> links) {
    std::size_t count = 0;
    for (; !links.empty(); links = links.subspan(firstGroup(links).size())) {
        ++count;
    }
    return count;
}

// Changes the group that stands at the end of `links`, from `first` on: a dependency more, one
// less, or another component name.
void changeGroup(std::vector<Link>& links, std::size_t first, Random& random) {
    const std::size_t size = links.size() - first;
    const std::size_t at = first + random.below(size);
    const std::uint64_t change = random.below(3);
    if (change == 0) {
        Link added = links[at];
        added.upstreamComponent = static_cast<std::uint8_t>(introducedComponents + random.below(8));
        links.push_back(added);
    } else if (change == 1 && size > 1) {
        links.erase(links.begin() + static_cast<std::ptrdiff_t>(at));
    } else {
        links[at].downstreamComponent =
            static_cast<std::uint8_t>(renamedComponents + links[at].downstreamComponent);
    }
}

// Random order of the files; the links follow it, those of one file in random order.
GeneratedSide shuffled(std::vector<std::uint32_t> files, std::vector<Link> links,
                       std::size_t allFiles, Random& random) {
    random.shuffle(files);
    random.shuffle(links);
    std::vector<std::uint32_t> position(allFiles);
    for (std::uint32_t i = 0; i < files.size(); ++i) {
        position[files[i]] = i;
    }
    std::ranges::stable_sort(links, {}, [&](const Link& link) { return position[link.upstream]; });
    return {.files = std::move(files), .links = std::move(links)};
}

// One pair in the making.
class PairMaker {
  public:
    PairMaker(std::uint32_t files, std::uint64_t seed)
        : random_(seed),
          files_(files),
          all_(files + files / 50),
          byPopularity_(shuffledNumbers(files, random_)),
          popularity_(byPopularity_),
          maker_(popularity_, all_, random_),
          removed_(all_, false) {
        pair_.changedProperty.assign(all_, GeneratedPair::noProperty);
    }

    GeneratedPair make() {
        drawLeft();
        changeFiles();
        keepOrChangeGroups();
        addFiles();
        pair_.expected.files = {.removed = all_ - files_,
                                .added = all_ - files_,
                                .common = 2 * std::size_t{files_} - all_,
                                .changed = files_ * std::size_t{3} / 100};
        std::vector<std::uint32_t> rightFiles = numbers(0, all_);
        std::erase_if(rightFiles, [&](std::uint32_t file) { return removed_[file]; });
        pair_.sides = {shuffled(numbers(0, files_), std::move(left_), all_, random_),
                       shuffled(std::move(rightFiles), std::move(right_), all_, random_)};
        return std::move(pair_);
    }

  private:
    // Every file gets the degree of its rank, so that the shape does not depend on luck.
    void drawLeft() {
        const std::vector<std::uint32_t> byDegree = shuffledNumbers(files_, random_);
        for (std::uint32_t rank = 0; rank < files_; ++rank) {
            maker_.addFile(byDegree[rank], degreeAt((rank + 0.5) / files_), left_);
        }
    }

    // What a large part of the project depends on is never removed.
    void changeFiles() {
        std::vector<std::uint32_t> candidates(byPopularity_.begin() + files_ / 100,
                                              byPopularity_.end());
        random_.shuffle(candidates);
        std::size_t next = 0;
        for (; next < all_ - files_; ++next) {
            removed_[candidates[next]] = true;
            maker_.exclude(candidates[next]);
        }
        for (std::size_t changed = 0; changed < files_ * std::size_t{3} / 100; ++changed) {
            pair_.changedProperty[candidates[next++]] =
                static_cast<std::uint8_t>(random_.below(propertyKeys.size()));
        }
    }

    void keepOrChangeGroups() {
        PairCounts& groups = pair_.expected.groups;
        for (std::span<const Link> rest = left_; !rest.empty();) {
            const std::span<const Link> group = firstGroup(rest);
            rest = rest.subspan(group.size());
            if (removed_[group.front().upstream] || removed_[group.front().downstream]) {
                ++groups.removed;
                continue;
            }
            ++groups.common;
            const std::size_t first = right_.size();
            right_.insert(right_.end(), group.begin(), group.end());
            if (random_.below(20) == 0) {
                ++groups.changed;
                changeGroup(right_, first, random_);
            }
        }
    }

    void addFiles() {
        std::vector<Link> added;
        const std::uint32_t count = all_ - files_;
        for (std::uint32_t i = 0; i < count; ++i) {
            maker_.addFile(files_ + i, degreeAt((i + 0.5) / count), added);
            std::vector<std::uint32_t> users;
            while (users.size() < incomingGroupsOfAddedFile) {
                const auto user = static_cast<std::uint32_t>(random_.below(files_));
                if (!removed_[user] && std::ranges::find(users, user) == users.end()) {
                    users.push_back(user);
                    maker_.addGroup(user, files_ + i, initialComponents, added);
                }
            }
        }
        pair_.expected.groups.added = groupCount(added);
        right_.insert(right_.end(), added.begin(), added.end());
    }

    Random random_;
    std::uint32_t files_;  // of the left side; those added on the right are numbered from here on
    std::uint32_t all_;
    std::vector<std::uint32_t> byPopularity_;
    Popularity popularity_;
    LinkMaker maker_;
    std::vector<bool> removed_;
    std::vector<Link> left_;
    std::vector<Link> right_;
    GeneratedPair pair_;
};

}  // namespace

std::span<const Link> firstGroup(std::span<const Link> links) {
    const auto end = std::ranges::find_if(links, [&](const Link& link) {
        return link.upstream != links.front().upstream ||
               link.downstream != links.front().downstream;
    });
    return links.first(static_cast<std::size_t>(end - links.begin()));
}

GeneratedPair generatePair(std::uint32_t files, std::uint64_t seed) {
    return PairMaker(files, seed).make();
}

}  // namespace depcompare::bench
