// Candidates of both sides are sorted by type, pairing key, side and dependency ID. A run of one
// key is then an edit, a run of one type a comparison, and the last candidate of a side in a run
// is the one that survives.
#include "subcomparators/dependency_pairing.h"

#include <algorithm>

namespace dependency::comparisons {

using ::comparisons::BySide;
using ::comparisons::CombinedComparison;
using ::comparisons::ComparisonValue;
using ::comparisons::Side;

namespace {

using Dependencies = ParallelDependencies::Dependencies;

const Dependencies* dependenciesOf(const ItemEdit& edit, Side side) {
    const auto& item = edit[side];
    return item ? &std::get<ParallelDependencies>(*item).dependencies : nullptr;
}

CombinedComparison combined(DependencyEdit edit) {
    std::vector<DependencyEdit> edits;
    edits.push_back(std::move(edit));
    std::vector<ComparisonValue> comparisons;
    comparisons.emplace_back(DependencyComparison(std::move(edits)));
    return CombinedComparison(std::move(comparisons));
}

// Calls `take` with each longest run of neighbours that agree in `projection`.
template <class Element, class Projection, class Take>
void forEachRun(std::span<Element> elements, Projection projection, Take take) {
    while (!elements.empty()) {
        const auto end = std::ranges::find_if(elements.subspan(1), [&](const auto& element) {
            return projection(element) != projection(elements.front());
        });
        const auto size = static_cast<std::size_t>(end - elements.begin());
        take(elements.first(size));
        elements = elements.subspan(size);
    }
}

// The names of a dependency's components. Joined without a separator, they are the pairing key within
// a type: "a" and "bc" pair with "ab" and "c".
struct Names {
    std::u16string upstream;
    std::u16string downstream;

    explicit Names(const graph::Dependency& dependency)
        : upstream(dependency.getUpstreamComponent()->getName()),
          downstream(dependency.getDownstreamComponent()->getName()) {}

    bool operator==(const Names&) const = default;
};

bool pairUp(const graph::Dependency& left, const graph::Dependency& right) {
    if (left.getType()->getID() != right.getType()->getID()) {
        return false;
    }
    const Names ofLeft(left);
    const Names ofRight(right);
    return ofLeft == ofRight ||
           ofLeft.upstream + ofLeft.downstream == ofRight.upstream + ofRight.downstream;
}

}  // namespace

// Fast path: the single edit of groups that have at most one dependency each, if they pair; its
// state is not set.
std::optional<DependencyEdit> DependencyPairing::singleEdit(const ItemEdit& edit) {
    DependencyEdit only;
    for (const Side side : ::comparisons::sides) {
        if (const auto* dependencies = dependenciesOf(edit, side)) {
            if (dependencies->size() != 1) {
                return std::nullopt;
            }
            only[side] = *dependencies->begin();
        }
    }
    const bool isOne = hasBothSides(only) ? pairUp(**only[Side::left], **only[Side::right])
                                          : only[Side::left] || only[Side::right];
    return isOne ? std::optional(std::move(only)) : std::nullopt;
}

CombinedComparison DependencyPairing::operator()(const ItemEdit& edit) {
    // Groups are equal if their dependencies are, one by one in the order of IDs.
    const bool equalByPlace =
        states_ == EditStates::trusted && hasBothSides(edit) && !edit.isChanged();
    if (auto single = singleEdit(edit)) {
        single->setChanged(hasBothSides(*single) && !equalByPlace &&
                           !(**(*single)[Side::left] == **(*single)[Side::right]));
        return combined(*std::move(single));
    }
    collect(edit);
    std::vector<ComparisonValue> comparisons;
    if (oneType_ && !candidates_.empty()) {
        comparisons.emplace_back(comparisonOf(candidates_, equalByPlace));
        return CombinedComparison(std::move(comparisons));
    }
    const auto typeID = [](const Candidate& candidate) -> const auto& {
        return candidate.type->getID();
    };
    const std::span<const Candidate> candidates(candidates_);
    std::size_t types = 0;
    forEachRun(candidates, typeID, [&](const auto& /*run*/) { ++types; });
    comparisons.reserve(types);
    forEachRun(candidates, typeID,
               [&](const auto& run) { comparisons.emplace_back(comparisonOf(run, equalByPlace)); });
    return CombinedComparison(std::move(comparisons));
}

void DependencyPairing::collect(const ItemEdit& edit) {
    keys_.clear();
    candidates_.clear();
    oneType_ = true;
    for (const Side side : ::comparisons::sides) {
        const auto* dependencies = dependenciesOf(edit, side);
        if (dependencies == nullptr) {
            continue;
        }
        std::size_t place = 0;
        for (const auto& dependency : *dependencies) {
            const std::size_t begin = keys_.size();
            const Names names(*dependency);
            keys_.append(names.upstream).append(names.downstream);
            candidates_.push_back({.type = dependency->getType(),
                                   .keyBegin = begin,
                                   .keySize = keys_.size() - begin,
                                   .side = side,
                                   .place = place++,
                                   .dependency = &dependency});
            const auto& first = candidates_.front().type;
            const auto& last = candidates_.back().type;
            oneType_ = oneType_ && (last == first || last->getID() == first->getID());
        }
    }
    const auto withinType = [&](const Candidate& candidate) {
        return std::tuple(keyOf(candidate), candidate.side, candidate.place);
    };
    if (oneType_) {
        std::ranges::sort(candidates_, {}, withinType);
    } else {
        std::ranges::sort(candidates_, {}, [&](const Candidate& candidate) {
            return std::tuple(std::u16string_view(candidate.type->getID()), withinType(candidate));
        });
    }
}

DependencyComparison DependencyPairing::comparisonOf(std::span<const Candidate> sameType,
                                                     bool equalByPlace) {
    runs_.clear();
    forEachRun(
        sameType, [&](const Candidate& candidate) { return keyOf(candidate); },
        [&](const auto& run) { runs_.push_back(run); });
    std::vector<DependencyEdit> edits;
    edits.reserve(runs_.size());
    for (const auto run : runs_) {
        BySide<const Candidate*> last{};
        for (const Candidate& candidate : run) {
            last[candidate.side] = &candidate;
        }
        DependencyEdit& edit = edits.emplace_back();
        for (const Side side : ::comparisons::sides) {
            if (last[side] != nullptr) {
                edit[side] = *last[side]->dependency;
            }
        }
        edit.setChanged(hasBothSides(edit) &&
                        !(equalByPlace && last[Side::left]->place == last[Side::right]->place) &&
                        !(**edit[Side::left] == **edit[Side::right]));
    }
    std::ranges::sort(edits,
                      [](const DependencyEdit& a, const DependencyEdit& b) { return a < b; });
    return DependencyComparison(std::move(edits));
}

}  // namespace dependency::comparisons
