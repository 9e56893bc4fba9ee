// The matching keys are IDs and joined IDs in one key space. No key text is made: the hash of a key
// follows from those of the IDs that it is joined of, and the IDs are read only if two keys have one
// hash and different parts.
#include "matching/pairing.h"

#include <algorithm>

#include <tsl/robin_set.h>

namespace dependency::comparisons {

using ::comparisons::Side;

namespace {

struct Key {
    std::uint64_t hash = 0;
    Number upstream = none;    // rank
    Number downstream = none;  // rank; `none` for a file
};

bool sameText(std::u16string_view head, std::u16string_view tail, std::u16string_view otherHead,
              std::u16string_view otherTail) {
    if (head.size() > otherHead.size()) {
        return sameText(otherHead, otherTail, head, tail);
    }
    const auto middle = otherHead.substr(head.size());
    return otherHead.starts_with(head) && tail.starts_with(middle) &&
           tail.substr(middle.size()) == otherTail;
}

// Keys and the pairings that have them, by number.
class KeyTable {
  public:
    explicit KeyTable(const PairIndex& index) : index_(index), table_(0, {&keys_}, {this}) {
        const auto [fewer, more] =
            std::minmax({index[Side::left].itemCount(), index[Side::right].itemCount()});
        table_.max_load_factor(0.9F);
        table_.reserve(std::size_t{more} + fewer);
        // Most items have a pair.
        pairings_.reserve(std::size_t{more} + fewer / 8);
        keys_.reserve(pairings_.capacity() + 1);
    }
    KeyTable(const KeyTable&) = delete;
    KeyTable& operator=(const KeyTable&) = delete;

    /// Returns: the pairing that has the key of this item, a new one if there is none.
    Pairing& pairingOf(Side side, Number item) {
        keys_.push_back(keyOf(index_[side], item));
        const auto [found, added] = table_.insert(static_cast<Number>(pairings_.size()));
        if (added) {
            return pairings_.emplace_back();
        }
        keys_.pop_back();
        return pairings_[*found];
    }

    std::vector<Pairing> pairings() && { return std::move(pairings_); }

  private:
    struct Hash {
        const std::vector<Key>* keys;
        std::size_t operator()(Number key) const { return mixed((*keys)[key].hash); }
    };
    struct Equal {
        const KeyTable* table;
        bool operator()(Number a, Number b) const { return table->same(a, b); }
    };

    [[nodiscard]] Key keyOf(const SideIndex& side, Number item) const {
        if (side.isFile(item)) {
            const Number rank = side.rankOf[item];
            return {.hash = index_.hashes[rank].hash, .upstream = rank};
        }
        const GroupRecord& group = side.group(item);
        const Number upstream = side.rankOf[group.file];
        const Number downstream = side.rankOf[group.downstream];
        return {.hash = TextHash::joined(index_.hashes[upstream], index_.hashes[downstream]),
                .upstream = upstream,
                .downstream = downstream};
    }

    [[nodiscard]] bool same(Number a, Number b) const {
        const Key& x = keys_[a];
        const Key& y = keys_[b];
        return (x.upstream == y.upstream && x.downstream == y.downstream) ||
               (x.hash == y.hash && sameText(textOf(x.upstream), textOf(x.downstream),
                                             textOf(y.upstream), textOf(y.downstream)));
    }
    [[nodiscard]] std::u16string_view textOf(Number rank) const {
        return rank == none ? std::u16string_view() : index_.ids[rank];
    }

    const PairIndex& index_;
    std::vector<Key> keys_;
    std::vector<Pairing> pairings_;
    tsl::robin_set<Number, Hash, Equal, std::allocator<Number>, true /* keep the hashes */> table_;
};

}  // namespace

std::vector<Pairing> pairItems(const PairIndex& index) {
    KeyTable table(index);
    for (const Side side : ::comparisons::sides) {
        for (Number file = 0; file < index[side].fileCount; ++file) {
            table.pairingOf(side, file).items[side] = file;
        }
    }
    for (const Side side : ::comparisons::sides) {
        for (Number group = index[side].fileCount; group < index[side].itemCount(); ++group) {
            Number& item = table.pairingOf(side, group).items[side];
            item = index[side].isFile(item) ? item : group;
        }
    }
    return std::move(table).pairings();
}

}  // namespace dependency::comparisons
