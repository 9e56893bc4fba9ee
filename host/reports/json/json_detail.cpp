#include "reports/json/json_detail.h"

#include <comparisons/combined_view_model.h>
#include <comparisons/viewmodel/parameter_view_model.h>
#include <fl/i18n/ustring.h>

namespace depcompare {

namespace {

using ::comparisons::DiffMetrics;
using ::comparisons::EditType;
using ::comparisons::indexOf;
using ::comparisons::RowCount;
using ::comparisons::Side;
using ::comparisons::sides;
using ::comparisons::viewmodel::ParameterViewModel;
using ::comparisons::viewmodel::parameter::tessel::Entry;
using ::comparisons::viewmodel::parameter::tessel::ParameterTable;
using ViewModel = PresentedTree::ViewModel;
using CombinedViewModel = ::comparisons::FilteredCombinedViewModel<Filters, 2>;

void writeRow(const Entry& row, JsonWriter& json) {
    json.beginObject();
    json.member("edit", nameOf(row->getEditTypes()[0]));
    for (const Side side : sides) {
        json.key(memberOf(side));
        const auto& parameter = row->getParameters()[indexOf(side)]->getParameter();
        if (!parameter) {
            json.null();
            continue;
        }
        json.beginObject();
        json.member("name", parameter->getName());
        json.member("value", parameter->getValue());
        json.endObject();
    }
    json.endObject();
}

void writeTable(const ParameterTable& table, JsonWriter& json) {
    json.key("columns");
    json.beginArray();
    for (const std::u16string& label : table->getViewOptions()->getColumnLabels()) {
        json.text(label);
    }
    json.endArray();
    json.key("rows");
    json.beginArray();
    for (const Entry& row : table->getEntries()) {
        writeRow(row, json);
    }
    json.endArray();
}

void writeRowCount(std::string_view name, const RowCount& count, JsonWriter& json) {
    json.key(name);
    json.beginObject();
    json.member("all", count.all);
    json.member("visible", count.visible);
    json.endObject();
}

void writeSide(const SideLedger& side, JsonWriter& json) {
    json.beginObject();
    json.member("nodes", side.nodes);
    json.member("files", side.files);
    json.key("otherNodes");
    json.beginObject();
    for (const auto& [type, count] : side.otherNodes) {
        json.member(fl::i18n::ustring_to_utf8(type), count);
    }
    json.endObject();
    json.member("dependencies", side.dependencies);
    json.member("compared", side.compared);
    json.member("folded", side.folded);
    json.member("leavingOtherNodes", side.leavingOthers);
    json.key("warnings");
    json.beginArray();
    for (const std::string& warning : side.warnings) {
        json.text(warning);
    }
    json.endArray();
    json.endObject();
}

void writeHidden(const HiddenByFilter& hidden, JsonWriter& json) {
    json.beginObject();
    json.member("filter", nameOf(hidden.filter));
    json.member("entries", hidden.entries.all());
    json.member("files", hidden.entries.files);
    json.member("groups", hidden.entries.groups);
    json.member("rows", hidden.rows);
    json.endObject();
}

}  // namespace

std::string_view memberOf(Side side) {
    return side == Side::left ? "left" : "right";
}

std::string_view nameOf(EditType type) {
    switch (type) {
        case EditType::rightOnly:
            return "added";
        case EditType::leftOnly:
            return "removed";
        case EditType::changed:
            return "changed";
        case EditType::unchanged:
            break;
    }
    return "unchanged";
}

void writeJsonMetrics(const DiffMetrics<2>& metrics, JsonWriter& json) {
    json.beginArray();
    for (const std::uint32_t count :
         {metrics.leftOnly, metrics.rightOnly, metrics.changed, metrics.nested}) {
        json.number(count);
    }
    json.endArray();
}

void writeJsonDetail(const ViewModel& viewModel, JsonWriter& json) {
    json.beginObject();
    json.member("type", viewModel.type());
    if (const auto* table = dynamic_cast<const ParameterViewModel*>(&viewModel)) {
        json.key("metrics");
        writeJsonMetrics(viewModel.metrics(), json);
        writeTable(table->table(), json);
    } else if (const auto* combined = dynamic_cast<const CombinedViewModel*>(&viewModel)) {
        json.key("metrics");
        writeJsonMetrics(viewModel.metrics(), json);
        json.key("parts");
        json.beginArray();
        for (const auto& part : combined->members()) {
            writeJsonDetail(*part, json);
        }
        json.endArray();
    }
    json.endObject();
}

void writeJsonLedger(const Ledger& ledger, JsonWriter& json) {
    json.beginObject();
    for (const Side side : sides) {
        json.key(memberOf(side));
        writeSide(ledger.sides[indexOf(side)], json);
    }
    writeRowCount("entries", ledger.visibility.entries, json);
    writeRowCount("rows", ledger.visibility.rows, json);
    json.key("filters");
    json.beginArray();
    for (const HiddenByFilter& hidden : ledger.visibility.hidden) {
        writeHidden(hidden, json);
    }
    json.endArray();
    json.endObject();
}

}  // namespace depcompare
