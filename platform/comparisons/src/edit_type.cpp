#include <comparisons/edit_type.h>

namespace comparisons {

EditType editType(bool left, bool right, bool changed) noexcept {
    if (left != right) {
        return left ? EditType::leftOnly : EditType::rightOnly;
    }
    return changed ? EditType::changed : EditType::unchanged;
}

}  // namespace comparisons
