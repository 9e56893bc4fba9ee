#pragma once
// Numbers of nodes by their address.
#include <cstdint>
#include <limits>
#include <vector>

#include <dependency/graph/node.h>

namespace dependency::comparisons {

using Number = std::uint32_t;
inline constexpr Number none = std::numeric_limits<Number>::max();

/// An open-addressing hash table: every dependency looks a node up, so a chain of list nodes would
/// cost more than anything else that is done with it.
class NodeNumbers {
  public:
    /// Returns: the number of `node`, which is `fresh` from now on where it had none.
    /// Complexity: constant, amortized.
    Number findOrAdd(const graph::Node* node, Number fresh) {
        if (2 * size_ >= slots_.size()) {
            grow();
        }
        Slot& slot = slots_[placeOf(node)];
        if (slot.node == nullptr) {
            slot = {.node = node, .number = fresh};
            ++size_;
        }
        return slot.number;
    }

  private:
    struct Slot {
        const graph::Node* node = nullptr;  // null: free
        Number number = 0;
    };

    // Returns: the slot of `node`, or the free one where it belongs.
    [[nodiscard]] std::size_t placeOf(const graph::Node* node) const {
        const std::size_t last = slots_.size() - 1;
        const auto mixed =
            reinterpret_cast<std::uintptr_t>(node) * std::uint64_t{0x9e3779b97f4a7c15};
        auto place = static_cast<std::size_t>(mixed >> 32U) & last;
        while (slots_[place].node != nullptr && slots_[place].node != node) {
            place = (place + 1) & last;
        }
        return place;
    }

    void grow() {
        std::vector<Slot> old(2 * slots_.size());
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.node != nullptr) {
                slots_[placeOf(slot.node)] = slot;
            }
        }
    }

    std::vector<Slot> slots_ = std::vector<Slot>(1024);
    std::size_t size_ = 0;
};

}  // namespace dependency::comparisons
