// Candidates of both sides are sorted by type, pairing key, side and dependency ID. A run of one
// key is then an edit, a run of one type a comparison, and the last candidate of a side in a run
// is the one that survives.
#include <dependency/comparisons/dependency_subcomparator.h>

#include <algorithm>
#include <span>
#include <tuple>

#include <comparisons/combined_comparison.h>
#include <fl/i18n/ustring.h>

namespace dependency::comparisons {

using ::comparisons::ComparisonValue;
using ::comparisons::Side;

namespace {

struct Candidate {
    std::shared_ptr<const graph::Type> type;
    std::u16string key;
    Side side;
    std::shared_ptr<graph::Dependency> dependency;
};

// Types that are one by ID may still differ in name, and then tell dependencies apart.
std::u16string pairingKey(const graph::Dependency& dependency) {
    return dependency.getType()->getName() + dependency.getUpstreamComponent()->getName() +
           dependency.getDownstreamComponent()->getName();
}

std::vector<Candidate> candidatesOf(const ItemEdit& edit) {
    std::vector<Candidate> candidates;
    for (const Side side : ::comparisons::sides) {
        if (const auto& item = edit[side]) {
            for (const auto& dependency : std::get<ParallelDependencies>(*item).dependencies) {
                candidates.push_back({.type = dependency->getType(),
                                      .key = pairingKey(*dependency),
                                      .side = side,
                                      .dependency = dependency});
            }
        }
    }
    std::ranges::sort(candidates, {}, [](const Candidate& candidate) {
        return std::tie(candidate.type->getID(), candidate.key, candidate.side,
                        candidate.dependency->getID());
    });
    return candidates;
}

// Returns: the leading candidates that agree in `projection`.
template <class Projection>
std::span<Candidate> leadingRun(std::span<Candidate> candidates, Projection projection) {
    const auto end = std::ranges::find_if(candidates, [&](const Candidate& candidate) {
        return projection(candidate) != projection(candidates.front());
    });
    return {candidates.begin(), end};
}

DependencyEdit editOf(std::span<Candidate> sameKey) {
    DependencyEdit edit;
    for (Candidate& candidate : sameKey) {
        edit[candidate.side] = std::move(candidate.dependency);
    }
    if (hasBothSides(edit)) {
        edit.setChanged(!(**edit[Side::left] == **edit[Side::right]));
    }
    return edit;
}

DependencyComparison comparisonOf(std::span<Candidate> sameType) {
    std::vector<DependencyEdit> edits;
    while (!sameType.empty()) {
        const auto sameKey = leadingRun(
            sameType, [](const Candidate& c) -> const auto& { return c.key; });
        edits.push_back(editOf(sameKey));
        sameType = sameType.subspan(sameKey.size());
    }
    std::ranges::sort(edits,
                      [](const DependencyEdit& a, const DependencyEdit& b) { return a < b; });
    return DependencyComparison(std::move(edits));
}

}  // namespace

const std::string& get_type(const DependencyComparison& /*comparison*/) {
    static const std::string type = "dependency_comparison";
    return type;
}

bool operator<(const DependencyEdit& a, const DependencyEdit& b) {
    return *anySide(a) < *anySide(b);
}

std::string describeDependency(const graph::Dependency& dependency) {
    const auto upstream = dependency.getUpstreamComponent();
    const auto downstream = dependency.getDownstreamComponent();
    return fl::i18n::ustring_to_utf8(
        u"upstream node: " + dependency.getUpstreamNode()->getID() +         //
        u"\ndownstream node: " + dependency.getDownstreamNode()->getID() +   //
        u"\ndependency type: " + dependency.getType()->getName() +           //
        u"\nupstream component type: " + upstream->getType()->getID() +      //
        u"\nupstream component name: " + upstream->getName() +               //
        u"\ndownstream component type: " + downstream->getType()->getID() +  //
        u"\ndownstream component name: " + downstream->getName());
}

DependencySubcomparator::~DependencySubcomparator() = default;

bool DependencySubcomparator::canCompare(const ItemEdit& edit) const {
    return std::holds_alternative<ParallelDependencies>(anySide(edit));
}

std::future<ComparisonValue> DependencySubcomparator::compare(const ItemEdit& edit) {
    auto candidates = candidatesOf(edit);
    std::vector<std::span<Candidate>> runs;
    for (std::span<Candidate> rest = candidates; !rest.empty();
         rest = rest.subspan(runs.back().size())) {
        runs.push_back(leadingRun(
            rest, [](const Candidate& c) -> const auto& { return c.type->getID(); }));
    }
    std::vector<ComparisonValue> comparisons;
    comparisons.reserve(runs.size());
    for (const auto& run : runs) {
        comparisons.emplace_back(comparisonOf(run));
    }
    return ::comparisons::readyFuture(::comparisons::CombinedComparison(std::move(comparisons)));
}

}  // namespace dependency::comparisons
