#pragma once
// The dependencies of two groups, paired within their types.
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include <comparisons/combined_comparison.h>
#include <dependency/comparisons/dependency_subcomparator.h>

#include "subcomparators/edit_states.h"

namespace dependency::comparisons {

/// Pairs the groups of many edits, one after the other.
class DependencyPairing {
  public:
    explicit DependencyPairing(EditStates states) : trusted_(states == EditStates::trusted) {}

    /// Returns: what `DependencySubcomparator::compare` promises.
    [[nodiscard]] ::comparisons::CombinedComparison operator()(const ItemEdit& edit);

  private:
    struct Candidate {
        std::shared_ptr<const graph::Type> type;
        std::size_t keyBegin;
        std::size_t keySize;
        ::comparisons::Side side;
        const std::shared_ptr<graph::Dependency>* dependency;
        const std::shared_ptr<graph::Dependency>* equal;  ///< on the right, where it is known
    };
    using Order = std::tuple<std::u16string_view, std::u16string_view, ::comparisons::Side,
                             std::u16string_view>;

    [[nodiscard]] std::u16string_view keyOf(const Candidate& candidate) const {
        return std::u16string_view(keys_).substr(candidate.keyBegin, candidate.keySize);
    }
    [[nodiscard]] Order orderOf(const Candidate& candidate) const {
        return {candidate.type->getID(), keyOf(candidate), candidate.side,
                (*candidate.dependency)->getID()};
    }
    void add(const std::shared_ptr<graph::Dependency>& dependency, ::comparisons::Side side);
    void sortCandidates();
    void collect(const ItemEdit& edit);
    // The left side of equal groups, each dependency with its right one.
    // Returns: false where that may be wrong, since dependencies share a pairing key.
    [[nodiscard]] bool collectPairs(const ItemEdit& edit);
    [[nodiscard]] DependencyComparison comparisonOf(std::span<const Candidate> sameType) const;

    [[nodiscard]] std::optional<DependencyEdit> onlyEdit(const ItemEdit& edit) const;

    bool trusted_;
    // Kept for their memory only.
    std::u16string keys_;
    std::vector<Candidate> candidates_;
};

}  // namespace dependency::comparisons
