#pragma once
// Whether an ID was used before.
#include <optional>
#include <set>
#include <string_view>

namespace dependency::graph {

/// Ascending IDs cannot repeat, so only the last one is kept; from the first ID that does not ascend,
/// a set holds all of them: not by hashes, for which IDs could be made that collide.
class DistinctIDs {
  public:
    /// Requires: `objects` are those whose IDs were added.
    template <class Objects>
    [[nodiscard]] bool contain(std::u16string_view id, const Objects& objects) {
        if (ascending_ && (!last_ || *last_ < id)) {
            return false;
        }
        if (ascending_) {
            std::set<std::u16string_view> all;
            for (const auto& object : objects) {
                all.insert(object.getID());
            }
            all_ = std::move(all);
            ascending_ = false;
        }
        return all_.contains(id);
    }

    /// Requires: `contain` has just returned false for `id`.
    /// Lifetime: `id` refers to text that outlives this.
    void add(std::u16string_view id) {
        if (ascending_) {
            last_ = id;
        } else {
            all_.insert(id);
        }
    }

  private:
    bool ascending_ = true;
    std::optional<std::u16string_view> last_;
    std::set<std::u16string_view> all_;  // empty while IDs ascend
};

}  // namespace dependency::graph
