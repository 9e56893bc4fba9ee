#pragma once
// A view model that shows a parameter table.
#include <string_view>

#include <comparisons/view_model.h>
#include <comparisons/viewmodel/parameter_table.h>

namespace comparisons::viewmodel {

/// A table with a row per visible edit and a name and a value per side.
class COMPARISONS_EXPORT ParameterViewModel : public virtual ViewModel {
  public:
    ~ParameterViewModel() override;

    /// Returns: the table as of the last commit; it stays the same object.
    [[nodiscard]] virtual const parameter::tessel::ParameterTable& table() const = 0;

    /// Heads the name column and the value column.
    virtual void setColumnLabels(std::u16string_view name, std::u16string_view value) = 0;
};

}  // namespace comparisons::viewmodel
