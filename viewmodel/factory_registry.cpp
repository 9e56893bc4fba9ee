#include <dependency/comparisons/view_model_factories.h>

#include <iterator>

namespace dependency::comparisons {

namespace {

using Factories = std::vector<std::unique_ptr<FilteredViewModelFactory>>;

Factories makeFactoryList() {
    Factories factories;
    factories.push_back(std::make_unique<GraphPropertyViewModelFactory>());
    factories.push_back(std::make_unique<DependencyViewModelFactory>());
    factories.push_back(std::make_unique<NodePropertyViewModelFactory>());
    return factories;
}

}  // namespace

::comparisons::FilteredVMFactoryRegistry<Filters, 2> getTwoFilteredVMFactoryRegistry() {
    Factories factories = makeFactoryList();
    factories.push_back(
        std::make_unique<::comparisons::FilteredCombinedViewModelFactory<Filters, 2>>(
            makeFactoryList()));
    return {.factories = {std::make_move_iterator(factories.begin()),
                          std::make_move_iterator(factories.end())},
            .fallback = {}};
}

}  // namespace dependency::comparisons
