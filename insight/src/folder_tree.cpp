#include "folder_tree.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <map>
#include <numeric>

namespace dependency::insight {

namespace {

using Text = FolderTree::Text;

// Returns: where the folders of an ID end, outermost first.
void findEnds(Text id, Text separator, std::vector<std::size_t>& ends) {
    ends.clear();
    std::size_t from = id.starts_with(separator) ? separator.size() : 0;
    for (std::size_t at = 0; (at = id.find(separator, from)) != id.npos;
         from = at + separator.size()) {
        ends.push_back(at);
    }
}

std::size_t commonStart(Text a, Text b) {
    const auto [end, other] = std::ranges::mismatch(a, b);
    return static_cast<std::size_t>(end - a.begin());
}

}  // namespace

FolderTree::FolderTree(const std::vector<Text>& ids, Text separator) : texts_(1), starts_(1) {
    std::map<Text, Number> numbers;     // of components
    std::vector<Number> components(1);  // by folder, its last one
    std::vector<Number> placeOf{none};  // by folder
    std::vector<Number> path(1);        // of the ID before
    std::vector<std::size_t> ends;
    Text before;
    places_.reserve(ids.size());
    for (const Text id : ids) {
        // IDs below one folder adjoin: what the ID before does not share is new.
        const std::size_t common = commonStart(before, id);
        std::size_t depth = 0;
        while (depth != ends.size() && ends[depth] + separator.size() <= common) {
            ++depth;
        }
        findEnds(id, separator, ends);
        path.resize(depth + 1);
        for (; depth != ends.size(); ++depth) {
            const std::size_t leading = id.starts_with(separator) ? separator.size() : 0;
            const std::size_t start = depth == 0 ? leading : ends[depth - 1] + separator.size();
            const auto fresh = static_cast<Number>(numbers.size());
            const Text component = id.substr(start, ends[depth] - start);
            components.push_back(numbers.try_emplace(component, fresh).first->second);
            path.push_back(static_cast<Number>(texts_.size()));
            texts_.push_back(id.substr(0, ends[depth]));
            placeOf.push_back(none);
        }
        if (Number& place = placeOf[path.back()]; place == none) {
            place = static_cast<Number>(placeCount());
            addFolder(path);
        }
        places_.push_back(placeOf[path.back()]);
        before = id;
    }
    sortByEnd(components);
}

void FolderTree::addFolder(std::span<const Number> path) {
    paths_.insert(paths_.end(), path.begin(), path.end());
    starts_.push_back(paths_.size());
}

// Numbers the places anew.
void FolderTree::sortByEnd(const std::vector<Number>& components) {
    // The top folder has no component.
    const auto commonOf = [&](Number a, Number b) {
        const auto left = path(a).subspan(1);
        const auto right = path(b).subspan(1);
        const auto end = std::mismatch(
            left.rbegin(), left.rend(), right.rbegin(), right.rend(),
            [&](Number one, Number other) { return components[one] == components[other]; });
        return static_cast<std::size_t>(end.first - left.rbegin());
    };
    std::vector<Number> order(placeCount());
    std::iota(order.begin(), order.end(), Number{0});
    std::ranges::sort(order, [&](Number a, Number b) {
        const std::size_t common = commonOf(a, b);
        const auto left = path(a);
        const auto right = path(b);
        const bool hasLeft = common + 1 != left.size();
        const bool hasRight = common + 1 != right.size();
        if (!hasLeft || !hasRight) {
            return hasLeft == hasRight ? a < b : hasRight;
        }
        return components[withoutEnd(a, common)] < components[withoutEnd(b, common)];
    });

    common_.assign(1, std::vector<Number>(order.size()));
    for (std::size_t i = 1; i < order.size(); ++i) {
        common_[0][i] = static_cast<Number>(commonOf(order[i - 1], order[i]));
    }
    for (std::size_t step = 1; 2 * step <= order.size(); step *= 2) {
        const auto& half = common_.back();
        std::vector<Number> least(half.size() - step);
        for (std::size_t i = 0; i < least.size(); ++i) {
            least[i] = std::min(half[i], half[i + step]);
        }
        common_.push_back(std::move(least));
    }

    std::vector<Number> ranks(order.size());
    const auto starts = std::exchange(starts_, std::vector<std::size_t>(1));
    const auto paths = std::exchange(paths_, {});
    for (Number rank = 0; rank < order.size(); ++rank) {
        ranks[order[rank]] = rank;
        addFolder(std::span(paths).subspan(starts[order[rank]],
                                           starts[order[rank] + 1] - starts[order[rank]]));
    }
    for (Number& place : places_) {
        place = ranks[place];
    }
}

std::size_t FolderTree::commonEnd(Number a, Number b) const {
    if (a == b) {
        return path(a).size() - 1;
    }
    const auto [first, last] = std::minmax(a, b);
    const Number step = std::bit_floor(last - first);
    const auto& least = common_[static_cast<std::size_t>(std::countr_zero(step))];
    return std::min(least[first + 1], least[last + 1 - step]);
}

}  // namespace dependency::insight
