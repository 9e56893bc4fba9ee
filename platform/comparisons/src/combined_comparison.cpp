#include <comparisons/combined_comparison.h>

namespace comparisons {

const std::string& get_type(const CombinedComparison& /*comparison*/) {
    static const std::string type = "combined_comparison";
    return type;
}

}  // namespace comparisons
