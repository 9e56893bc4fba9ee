#pragma once
// An open-addressing hash table from things that the caller keeps to their numbers.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace depcompare::bench {

/// Holds numbers and a part of their hashes only, eight bytes a slot, probed linearly.
class FlatIndex {
  public:
    FlatIndex() : slots_(1024) {}

    /// Returns: the number held for which `same(number)` is true; `number`, now held, where there
    ///          is none.
    /// Requires: equal things have equal hashes, mixed well in the upper half; numbers below 2^31.
    template <class Same>
    std::uint32_t findOrAdd(std::uint64_t hash, std::uint32_t number, Same same) {
        if (size_ * 2 >= slots_.size()) {
            grow();
        }
        const std::uint32_t tag = tagOf(hash);
        Slot& slot = slots_[probe(tag, same)];
        if (slot.numberPlus1 == 0) {
            slot = {.tag = tag, .numberPlus1 = number + 1};
            ++size_;
        }
        return slot.numberPlus1 - 1;
    }

    /// Requires: a number is held for which `same(number)` is true.
    /// Returns:  that number.
    template <class Same>
    [[nodiscard]] std::uint32_t find(std::uint64_t hash, Same same) const {
        return slots_[probe(tagOf(hash), same)].numberPlus1 - 1;
    }

  private:
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t numberPlus1 = 0;  // 0: free
    };

    static std::uint32_t tagOf(std::uint64_t hash) {
        return static_cast<std::uint32_t>(hash >> 32U);
    }

    // The slot that holds what is looked for, or else the free one where it belongs.
    template <class Same>
    [[nodiscard]] std::size_t probe(std::uint32_t tag, Same same) const {
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = tag & mask;
        while (slots_[at].numberPlus1 != 0 &&
               !(slots_[at].tag == tag && same(slots_[at].numberPlus1 - 1))) {
            at = (at + 1) & mask;
        }
        return at;
    }

    void grow() {
        std::vector<Slot> old(slots_.size() * 2);
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.numberPlus1 != 0) {
                slots_[probe(slot.tag, [](std::uint32_t) { return false; })] = slot;
            }
        }
    }

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
};

}  // namespace depcompare::bench
