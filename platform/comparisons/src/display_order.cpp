// Matched children that keep their order (a longest increasing run of left positions, walked in
// right order) are the spine; everything else is filled in between.
#include <comparisons/display_order.h>

#include <algorithm>

namespace comparisons {

namespace {

std::vector<std::size_t> inOrderOf(Side side, std::span<const ChildPositions> children) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i].positions[side]) {
            order.push_back(i);
        }
    }
    std::ranges::sort(order, {}, [&](std::size_t i) { return *children[i].positions[side]; });
    return order;
}

// Patience sorting: `tails[k]` ends the best run of length k + 1 so far.
std::vector<bool> longestIncreasingRun(std::span<const std::size_t> rightOrder,
                                       std::span<const ChildPositions> children) {
    constexpr auto none = static_cast<std::size_t>(-1);
    const auto leftPosition = [&](std::size_t i) { return *children[i].positions[Side::left]; };
    std::vector<std::size_t> tails;
    std::vector<std::size_t> previous(children.size(), none);
    for (const std::size_t child : rightOrder) {
        if (!children[child].positions[Side::left]) {
            continue;
        }
        const auto place = std::ranges::lower_bound(tails, leftPosition(child), {}, leftPosition);
        if (place != tails.begin()) {
            previous[child] = *std::prev(place);
        }
        if (place == tails.end()) {
            tails.push_back(child);
        } else {
            *place = child;
        }
    }
    std::vector<bool> inRun(children.size(), false);
    for (std::size_t child = tails.empty() ? none : tails.back(); child != none;
         child = previous[child]) {
        inRun[child] = true;
    }
    return inRun;
}

}  // namespace

std::vector<DisplayedChild> displayOrder(std::span<const ChildPositions> children) {
    const auto leftOrder = inOrderOf(Side::left, children);
    const auto rightOrder = inOrderOf(Side::right, children);
    const auto keepsOrder = longestIncreasingRun(rightOrder, children);

    std::vector<DisplayedChild> displayed;
    displayed.reserve(children.size());
    auto nextLeft = leftOrder.begin();
    const auto leftOnlyUpToSpine = [&] {
        for (; nextLeft != leftOrder.end() && !keepsOrder[*nextLeft]; ++nextLeft) {
            if (!children[*nextLeft].matched) {
                displayed.push_back({.index = *nextLeft});
            }
        }
    };
    leftOnlyUpToSpine();
    for (const std::size_t child : rightOrder) {
        const bool stays = children[child].positions[Side::left].has_value();
        displayed.push_back({.index = child,
                             .orderMove = stays && !keepsOrder[child],
                             .hierarchyMove = children[child].matched && !stays});
        if (keepsOrder[child]) {
            ++nextLeft;
            leftOnlyUpToSpine();
        }
    }
    return displayed;
}

}  // namespace comparisons
