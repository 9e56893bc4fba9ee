// Candidates of both sides are sorted by type, pairing key, side and dependency ID. A run of one
// key is then an edit, a run of one type a comparison, and the last candidate of a side in a run
// is the one that survives.
#include "subcomparators/dependency_pairing.h"

#include <algorithm>
#include <tuple>

namespace dependency::comparisons {

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
        const auto end = std::ranges::find_if(elements, [&](const auto& element) {
            return projection(element) != projection(elements.front());
        });
        const std::span<Element> run(elements.begin(), end);
        take(run);
        elements = elements.subspan(run.size());
    }
}

template <class Element, class Projection>
std::size_t countRuns(std::span<Element> elements, Projection projection) {
    std::size_t runs = 0;
    forEachRun(elements, projection, [&](const auto& /*run*/) { ++runs; });
    return runs;
}

}  // namespace

CombinedComparison DependencyPairing::operator()(const ItemEdit& edit) {
    if (auto only = onlyEdit(edit)) {
        return combined(*std::move(only));
    }
    if (!collectPairs(edit)) {
        collect(edit);
    }
    const auto typeID = [](const Candidate& candidate) -> const auto& {
        return candidate.type->getID();
    };
    const std::span<const Candidate> candidates(candidates_);
    std::vector<ComparisonValue> comparisons;
    comparisons.reserve(countRuns(candidates, typeID));
    forEachRun(candidates, typeID,
               [&](const auto& run) { comparisons.emplace_back(comparisonOf(run)); });
    return CombinedComparison(std::move(comparisons));
}

// Returns: the only edit of groups with one dependency a side, where it takes no pairing
// key to see that there is but one.
std::optional<DependencyEdit> DependencyPairing::onlyEdit(const ItemEdit& edit) const {
    DependencyEdit only;
    for (const Side side : ::comparisons::sides) {
        if (const auto* dependencies = dependenciesOf(edit, side)) {
            if (dependencies->size() != 1) {
                return std::nullopt;
            }
            only[side] = *dependencies->begin();
        }
    }
    if (!only[Side::left] && !only[Side::right]) {
        return std::nullopt;
    }
    if (hasBothSides(only)) {
        const graph::Dependency& left = **only[Side::left];
        const graph::Dependency& right = **only[Side::right];
        const bool equal = (trusted_ && !edit.isChanged()) || left == right;
        if (!equal || left.getType()->getName() != right.getType()->getName()) {
            return std::nullopt;
        }
    }
    return only;
}

void DependencyPairing::add(const std::shared_ptr<graph::Dependency>& dependency, Side side) {
    auto type = dependency->getType();
    const std::size_t begin = keys_.size();
    // Types that are one by ID may still differ in name, and then tell dependencies apart.
    keys_.append(type->getName())
        .append(dependency->getUpstreamComponent()->getName())
        .append(dependency->getDownstreamComponent()->getName());
    candidates_.push_back({.type = std::move(type),
                           .keyBegin = begin,
                           .keySize = keys_.size() - begin,
                           .side = side,
                           .dependency = &dependency,
                           .equal = nullptr});
}

void DependencyPairing::sortCandidates() {
    std::ranges::sort(candidates_, {}, [&](const Candidate& c) { return orderOf(c); });
}

bool DependencyPairing::collectPairs(const ItemEdit& edit) {
    if (!trusted_ || edit.isChanged() || !hasBothSides(edit)) {
        return false;
    }
    keys_.clear();
    candidates_.clear();
    auto right = dependenciesOf(edit, Side::right)->begin();
    for (const auto& left : *dependenciesOf(edit, Side::left)) {
        add(left, Side::left);
        if (candidates_.back().type->getName() != (*right)->getType()->getName()) {
            return false;
        }
        candidates_.back().equal = &*right++;
    }
    sortCandidates();
    const auto sameKey = [&](const Candidate& a, const Candidate& b) {
        return a.type->getID() == b.type->getID() && keyOf(a) == keyOf(b);
    };
    return std::ranges::adjacent_find(candidates_, sameKey) == candidates_.end();
}

void DependencyPairing::collect(const ItemEdit& edit) {
    keys_.clear();
    candidates_.clear();
    for (const Side side : ::comparisons::sides) {
        if (const auto* dependencies = dependenciesOf(edit, side)) {
            for (const auto& dependency : *dependencies) {
                add(dependency, side);
            }
        }
    }
    sortCandidates();
}

DependencyComparison DependencyPairing::comparisonOf(std::span<const Candidate> sameType) const {
    const auto key = [&](const Candidate& candidate) { return keyOf(candidate); };
    std::vector<DependencyEdit> edits;
    edits.reserve(countRuns(sameType, key));
    forEachRun(sameType, key, [&](const auto& run) {
        DependencyEdit& edit = edits.emplace_back();
        for (const Candidate& candidate : run) {
            edit[candidate.side] = *candidate.dependency;
        }
        if (const auto* equal = run.front().equal) {
            edit[Side::right] = *equal;
        } else if (hasBothSides(edit)) {
            edit.setChanged(!(**edit[Side::left] == **edit[Side::right]));
        }
    });
    std::ranges::sort(edits,
                      [](const DependencyEdit& a, const DependencyEdit& b) { return a < b; });
    return DependencyComparison(std::move(edits));
}

}  // namespace dependency::comparisons
