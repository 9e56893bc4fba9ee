#pragma once
// The dependencies of two groups, paired within their types.
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <comparisons/combined_comparison.h>
#include <dependency/comparisons/dependency_subcomparator.h>

#include "subcomparators/edit_states.h"

namespace dependency::comparisons {

/// Pairs the groups of many edits, one after the other.
class DependencyPairing {
  public:
    explicit DependencyPairing(EditStates states) : states_(states) {}

    /// Returns: what `DependencySubcomparator::compare` promises.
    [[nodiscard]] ::comparisons::CombinedComparison operator()(const ItemEdit& edit);

  private:
    struct Candidate {
        std::shared_ptr<const graph::Type> type;
        std::size_t keyBegin;
        std::size_t keySize;
        ::comparisons::Side side;
        std::size_t place;  ///< in the order of IDs
        const std::shared_ptr<graph::Dependency>* dependency;
    };

    [[nodiscard]] std::u16string_view keyOf(const Candidate& candidate) const {
        return std::u16string_view(keys_).substr(candidate.keyBegin, candidate.keySize);
    }
    [[nodiscard]] static std::optional<DependencyEdit> singleEdit(const ItemEdit& edit);
    void collect(const ItemEdit& edit);
    [[nodiscard]] DependencyComparison comparisonOf(std::span<const Candidate> sameType,
                                                    bool equalByPlace);

    EditStates states_;
    // Scratch buffers, reused between calls.
    std::u16string keys_;
    std::vector<Candidate> candidates_;
    std::vector<std::span<const Candidate>> runs_;
    bool oneType_ = false;  // of all candidates, as nearly always
};

}  // namespace dependency::comparisons
