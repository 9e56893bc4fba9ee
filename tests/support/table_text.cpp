#include "table_text.h"

#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/replace.hpp>

#include <comparisons/combined_view_model.h>
#include <comparisons/viewmodel/parameter_view_model.h>
#include <dependency/comparisons/filters.h>
#include <tessel/core/element.h>

#include "text_graph.h"

namespace dependency::test {

namespace tessel = ::comparisons::viewmodel::parameter::tessel;
using ::comparisons::viewmodel::ParameterViewModel;
using Combined = ::comparisons::FilteredCombinedViewModel<comparisons::Filters, 2>;
using TwoWayMetrics = ::comparisons::viewmodel::utils::tessel::TwoWayMetrics;

namespace {

std::string labelsOf(const tessel::ParameterTable& table) {
    std::vector<std::string> labels;
    for (const std::u16string& label : table->getViewOptions()->getColumnLabels()) {
        labels.push_back(boost::replace_all_copy(utf8(label), "\n", "\\n"));
    }
    return boost::join(labels, " | ") + '\n';
}

std::string sideOf(const tessel::OptionalParameter& side) {
    const tessel::Parameter& parameter = side->getParameter();
    return parameter ? utf8(parameter->getName()) + '=' + utf8(parameter->getValue()) : "-";
}

std::string entryOf(const tessel::Entry& entry) {
    const auto& types = entry->getEditTypes();
    const auto& sides = entry->getParameters();
    std::string text = std::to_string(static_cast<std::uint32_t>(types[0])) + ' ' +
                       sideOf(sides[0]) + " | " + sideOf(sides[1]);
    if (const auto& metrics = entry->getSubmetrics()) {
        const auto twoWay = ::tessel::core::cast<TwoWayMetrics>(metrics);
        text += " (" + textOf(twoWay->getCounts()) + ')';
    }
    return text + '\n';
}

std::string entriesOf(const tessel::ParameterTable& table) {
    std::string text;
    for (const tessel::Entry& entry : table->getEntries()) {
        text += entryOf(entry);
    }
    return text;
}

template <class Text>
std::string everyTable(const ::comparisons::ViewModel& viewModel, const Text& text) {
    if (const auto* combined = dynamic_cast<const Combined*>(&viewModel)) {
        std::string joined;
        for (const auto& member : combined->members()) {
            joined += everyTable(*member, text);
        }
        return joined;
    }
    const auto* parameters = dynamic_cast<const ParameterViewModel*>(&viewModel);
    return parameters != nullptr ? text(parameters->table()) : viewModel.type() + '\n';
}

}  // namespace

std::string textOf(const ::comparisons::DiffMetrics<2>& metrics) {
    std::string text;
    for (const auto count :
         {metrics.leftOnly, metrics.rightOnly, metrics.changed, metrics.nested}) {
        text += text.empty() ? "" : " ";
        text += std::to_string(count);
    }
    return text;
}

std::string textOf(const tessel::ParameterTable& table) {
    return labelsOf(table) + entriesOf(table);
}

std::string tablesOf(const ::comparisons::ViewModel& viewModel) {
    return everyTable(viewModel, [](const auto& table) { return textOf(table); });
}

std::string entriesOf(const ::comparisons::ViewModel& viewModel) {
    return everyTable(viewModel, [](const auto& table) { return entriesOf(table); });
}

}  // namespace dependency::test
