#include <dependency/comparisons/filters.h>

namespace dependency::comparisons {

std::vector<Filters> getDefaultEnabledFilters() {
    return {NonstructuralFilter()};
}

}  // namespace dependency::comparisons
