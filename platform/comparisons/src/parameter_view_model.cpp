#include <comparisons/viewmodel/parameter_view_model.h>

namespace comparisons::viewmodel {

ParameterViewModel::~ParameterViewModel() = default;

}  // namespace comparisons::viewmodel
