#include "presentation/enabled_filters.h"

#include <algorithm>
#include <iterator>

namespace depcompare {

namespace {

using ::comparisons::UnchangedFilter;
using dependency::comparisons::NonstructuralFilter;

struct Names {
    std::string_view name;
    std::string_view title;
    std::string_view hiddenThings;
};

struct NamesOf {
    Names operator()(const UnchangedFilter& /*filter*/) const {
        return {"unchanged", "unchanged", "what is the same on both sides"};
    }
    Names operator()(const NonstructuralFilter& /*filter*/) const {
        return {"nonstructural", "non-structural",
                "what differs only in properties; added and removed files and dependencies stay"};
    }
};

EnabledFilters inOrder(EnabledFilters filters) {
    // The alternatives are in the order in which filters are applied.
    std::ranges::sort(filters, {}, [](const Filters& filter) { return filter.index(); });
    filters.erase(std::unique(filters.begin(), filters.end()), filters.end());
    return filters;
}

}  // namespace

const EnabledFilters& allFilters() {
    static const EnabledFilters filters{UnchangedFilter(), NonstructuralFilter()};
    return filters;
}

std::vector<std::string> filterNames() {
    std::vector<std::string> names;
    for (const Filters& filter : allFilters()) {
        names.emplace_back(nameOf(filter));
    }
    std::ranges::sort(names);
    return names;
}

std::string_view nameOf(const Filters& filter) {
    return std::visit(NamesOf(), filter).name;
}

std::string_view titleOf(const Filters& filter) {
    return std::visit(NamesOf(), filter).title;
}

std::string_view hiddenThingsOf(const Filters& filter) {
    return std::visit(NamesOf(), filter).hiddenThings;
}

EnabledFilters filtersNamed(const std::vector<std::string>& names) {
    EnabledFilters filters;
    std::ranges::copy_if(allFilters(), std::back_inserter(filters), [&](const Filters& filter) {
        return std::ranges::find(names, nameOf(filter)) != names.end();
    });
    return inOrder(std::move(filters));
}

std::vector<EnabledFilters> allChoicesOfFilters() {
    std::vector<EnabledFilters> choices{{}};
    for (const Filters& filter : allFilters()) {
        const std::size_t without = choices.size();
        for (std::size_t i = 0; i < without; ++i) {
            choices.push_back(choices[i]);
            choices.back().push_back(filter);
        }
    }
    return choices;
}

std::size_t placeOfChoice(const EnabledFilters& filters) {
    const auto choices = allChoicesOfFilters();
    return static_cast<std::size_t>(std::ranges::find(choices, filters) - choices.begin());
}

bool showDetails(const EnabledFilters& filters) {
    return std::ranges::find(filters, Filters(NonstructuralFilter())) == filters.end();
}

EnabledFilters defaultFilters() {
    return inOrder(dependency::comparisons::getDefaultEnabledFilters());
}

}  // namespace depcompare
