#include "viewmodel/filtered_param_vm.h"

#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>

namespace comparisons::viewmodel::vm_detail {

namespace {

std::u16string defaultLabel(std::string_view key) {
    return fl::i18n::MessageCatalog::get_message(fl::i18n::MessageID("comparisons:commonweb", key),
                                                 fl::i18n::Locale::global());
}

}  // namespace

const std::string& parameterViewModelType() {
    static const std::string type = "parameter";
    return type;
}

parameter::tessel::ParameterTable initTable(::tessel::core::Model& model) {
    const parameter::ViewOptions options{{defaultLabel("ParamName"), defaultLabel("ParamValue")}};
    return utils::executeTesselTransaction(model, [&] {
        auto table = parameter::tessel::ParameterTable::create(model);
        table->setViewOptions(toTessel(options, model));
        return table;
    });
}

void setColumnLabels(::tessel::core::Model& model, parameter::tessel::ParameterTable& table,
                     std::u16string_view name, std::u16string_view value) {
    utils::executeTesselTransaction(model, [&] {
        auto& labels = table->getViewOptions()->getColumnLabelsMutable();
        labels.clear();
        labels.reserve(2);
        labels.push_back(std::u16string(name));
        labels.push_back(std::u16string(value));
    });
}

}  // namespace comparisons::viewmodel::vm_detail
