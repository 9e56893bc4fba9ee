#pragma once
// Tells whether an ID was given before.
#include <optional>
#include <string_view>
#include <unordered_set>

namespace dependency::graph {

/// IDs that come in ascending order cannot repeat, so nothing is kept of them but the last one; a
/// hash set holds them all from the first that does not ascend.
class DistinctIDs {
  public:
    /// Requires: `objects` are those whose IDs were added.
    template <class Objects>
    [[nodiscard]] bool contain(std::u16string_view id, const Objects& objects) {
        if (ascending_ && (!last_ || *last_ < id)) {
            return false;
        }
        if (ascending_) {
            std::unordered_set<std::u16string_view> all;
            all.reserve(2 * objects.size());
            for (const auto& object : objects) {
                all.insert(object.getID());
            }
            all_ = std::move(all);
            ascending_ = false;
        }
        return all_.contains(id);
    }

    /// Requires: `contain` has just denied `id`.
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
    std::unordered_set<std::u16string_view> all_;  // empty while they ascend
};

}  // namespace dependency::graph
