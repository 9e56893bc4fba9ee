#include <comparisons/combined_view_model.h>

namespace comparisons::detail {

const std::string& combinedViewModelType() {
    static const std::string type = "combined";
    return type;
}

const std::string& emptyViewModelType() {
    static const std::string type = "empty";
    return type;
}

}  // namespace comparisons::detail
