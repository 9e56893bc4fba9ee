#include <comparisons/view_model.h>

namespace comparisons {

ViewModel::~ViewModel() = default;

}  // namespace comparisons
