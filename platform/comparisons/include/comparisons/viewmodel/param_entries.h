#pragma once
// From edits to the rows of a parameter table.
#include <optional>

#include <comparisons/edit_type.h>
#include <comparisons/side.h>
#include <comparisons/viewmodel/parameter_table.h>

namespace comparisons::viewmodel::detail {

template <class Side, class MakeParam>
[[nodiscard]] parameter::tessel::OptionalParameter makeOptionalParameter(
    const std::optional<Side>& side, const MakeParam& makeParam, ::tessel::core::Model& model) {
    auto optional = parameter::tessel::OptionalParameter::create(model);
    if (side) {
        auto [name, value] = makeParam(*side);
        auto parameter = parameter::tessel::Parameter::create(model);
        parameter->setName(std::move(name));
        parameter->setValue(std::move(value));
        optional->setParameter(parameter);
    }
    return optional;
}

/// Replaces the entries of `table` by one per edit of `edits`, a range of pointers to edits: a
/// parameter per side, left first, empty where the side is absent, and one edit type. Each entry is
/// given to `onEntry(entry, edit)` before it joins the table.
///
/// Requires: inside a transaction of `model`.
template <class Range, class MakeParam, class OnEntry>
void generateParamEntries(const Range& edits, const MakeParam& makeParam,
                          ::tessel::core::Model& model, parameter::tessel::ParameterTable& table,
                          OnEntry&& onEntry) {
    auto& entries = table->getEntriesMutable();
    entries.clear();
    entries.reserve(edits.size());
    for (const auto* edit : edits) {
        auto entry = parameter::tessel::Entry::create(model);
        for (const Side side : sides) {  // NOLINT(clang-analyzer-cplusplus*): the model owns all.
            entry->getParametersMutable().push_back(
                makeOptionalParameter((*edit)[side], makeParam, model));
        }
        entry->getEditTypesMutable().push_back(editType(*edit));
        onEntry(entry, *edit);
        entries.push_back(entry);
    }
}

}  // namespace comparisons::viewmodel::detail
