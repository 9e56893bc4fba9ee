#pragma once
// The display state of one entry of a comparison tree.
#include <array>
#include <bitset>
#include <cstddef>
#include <functional>

#include <comparisons/edit_type.h>

namespace comparisons::viewmodel::utils::tessel {
using EditType = ::comparisons::EditType;
}

namespace comparisons::viewmodel::tree {

/// Refers to one entry of a filtered tree; two are equal if they refer to the same one.
///
/// Lifetime: that of the tree.
class Match {
  public:
    class Impl {
      public:
        // One of each for a comparison of two sides; a comparison of more would have one per pair.
        using EditTypes = std::array<utils::tessel::EditType, 1>;
        using Bits = std::bitset<1>;

        Impl(std::size_t index, utils::tessel::EditType editType, bool hierarchyMove,
             bool orderMove)
            : index_(index),
              editTypes_{editType},
              hierarchyMove_(hierarchyMove ? 1U : 0U),
              orderMove_(orderMove ? 1U : 0U) {}

        /// Returns: the entry's place in the list of the tree.
        [[nodiscard]] std::size_t getIndex() const noexcept { return index_; }
        [[nodiscard]] const EditTypes& getEditTypes() const noexcept { return editTypes_; }
        /// Returns: set if the sides have the entry under different parents.
        [[nodiscard]] Bits getIsHierMove() const noexcept { return hierarchyMove_; }
        /// Returns: set if the sides order the entry differently among its siblings.
        [[nodiscard]] Bits getIsOrderMove() const noexcept { return orderMove_; }

      private:
        std::size_t index_;
        EditTypes editTypes_;
        Bits hierarchyMove_;
        Bits orderMove_;
    };

    explicit Match(const Impl& impl) noexcept : impl_(&impl) {}

    [[nodiscard]] const Impl* operator->() const noexcept { return impl_; }
    [[nodiscard]] const Impl& operator*() const noexcept { return *impl_; }

    friend bool operator==(Match, Match) = default;

  private:
    const Impl* impl_;
};

}  // namespace comparisons::viewmodel::tree

template <>
struct std::hash<comparisons::viewmodel::tree::Match> {
    std::size_t operator()(comparisons::viewmodel::tree::Match match) const noexcept {
        return std::hash<const void*>()(&*match);
    }
};
