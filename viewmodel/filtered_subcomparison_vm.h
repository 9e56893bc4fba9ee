#pragma once
// The view model that this library's factories create.
#include <comparisons/viewmodel/filtered_param_vm.h>
#include <dependency/comparisons/filters.h>

#include "viewmodel/make_view_model_param.h"
#include "viewmodel/row_rules.h"

namespace dependency::comparisons {

template <class Edit>
class FilteredSubcomparisonVM final
    : public ::comparisons::viewmodel::FilteredParamVM<Filters, Edit, MakeViewModelParam, 2> {
  public:
    using ::comparisons::viewmodel::FilteredParamVM<Filters, Edit, MakeViewModelParam,
                                                    2>::FilteredParamVM;
};

}  // namespace dependency::comparisons
