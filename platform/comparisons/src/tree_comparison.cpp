#include <comparisons/tree_comparison.h>

namespace comparisons::detail {

const std::string& treeComparisonType() {
    static const std::string type = "treeComparison";
    return type;
}

}  // namespace comparisons::detail
