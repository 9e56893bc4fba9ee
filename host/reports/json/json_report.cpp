#include "reports/json/json_report.h"

#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include <comparisons/combined_view_model.h>
#include <comparisons/side.h>
#include <comparisons/viewmodel/parameter_view_model.h>
#include <fl/i18n/locale.h>

#include "output/json_writer.h"
#include "presentation/account_json.h"
#include "presentation/entry_label.h"
#include "presentation/insights_json.h"

namespace depcompare {

namespace {

using ::comparisons::DiffMetrics;
using ::comparisons::indexOf;
using ::comparisons::Side;
using ::comparisons::sides;
using ::comparisons::viewmodel::ParameterViewModel;
using ::comparisons::viewmodel::parameter::tessel::ParameterTable;
using dependency::comparisons::Item;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using CombinedViewModel = ::comparisons::FilteredCombinedViewModel<Filters, 2>;
using Match = PresentedTree::Match;
using Row = ::comparisons::viewmodel::parameter::tessel::Entry;
using ViewModel = PresentedTree::ViewModel;

void writeRow(const Row& row, JsonWriter& json) {
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
    for (const Row& row : table->getEntries()) {
        writeRow(row, json);
    }
    json.endArray();
}

void writeMetrics(const DiffMetrics<2>& metrics, JsonWriter& json) {
    json.beginArray();
    for (const std::uint32_t count :
         {metrics.leftOnly, metrics.rightOnly, metrics.changed, metrics.nested}) {
        json.number(count);
    }
    json.endArray();
}

void writeViewModel(const ViewModel& viewModel, JsonWriter& json) {
    json.beginObject();
    json.member("type", viewModel.type());
    if (const auto* table = dynamic_cast<const ParameterViewModel*>(&viewModel)) {
        json.key("metrics");
        writeMetrics(viewModel.metrics(), json);
        writeTable(table->table(), json);
    } else if (const auto* combined = dynamic_cast<const CombinedViewModel*>(&viewModel)) {
        json.key("metrics");
        writeMetrics(viewModel.metrics(), json);
        json.key("parts");
        json.beginArray();
        for (const auto& part : combined->members()) {
            writeViewModel(*part, json);
        }
        json.endArray();
    }
    json.endObject();
}

class JsonReport {
  public:
    JsonReport(const Report& report, Output& output) : report_(report), json_(output) {}

    void write() {
        json_.beginObject();
        json_.member("format", "depcompare-report");
        json_.key("version");
        json_.number(jsonReportVersion);
        json_.member("locale", fl::i18n::Locale::global().name());
        json_.key("filters");
        json_.beginArray();
        for (const Filters& filter : report_.tree->filters()) {
            json_.text(nameOf(filter));
        }
        json_.endArray();
        writeAccount(report_, json_);
        if (report_.insights) {
            json_.key("insights");
            writeInsights(*report_.insights, json_);
        }
        json_.key("tree");
        writeEntry(0);
        json_.endObject();
    }

    // The ends of an entry, by the kind of item.
    void operator()(const std::shared_ptr<const Graph>& /*graph*/) {}
    void operator()(const std::shared_ptr<Node>& file) {
        json_.member("id", idOf(*file));
        json_.member("name", file->getName());
        json_.member("type", file->getType()->getID());
    }
    void operator()(const ParallelDependencies& group) {
        json_.member("upstream", idOf(*group.upstream));
        json_.member("downstream", idOf(*group.downstream));
        json_.member("downstreamName", group.downstream->getName());
        json_.member("downstreamType", group.downstream->getType()->getID());
    }

  private:
    /// Returns: the place after this entry and all below it.
    std::size_t writeEntry(std::size_t index) {
        const auto& entry = report_.tree->entries()[index];
        const Match match = entry.match;
        const auto& compared = report_.tree->compared(match);
        json_.breakLine();
        json_.beginObject();
        json_.member("kind", nameOf(kindOf(::comparisons::anySide(compared.edit))));
        json_.member("edit", nameOf(match->getEditTypes().front()));
        json_.key("visible");
        json_.boolean(entry.visible != 0);
        if (PresentedTree::isMoved(match)) {
            json_.key("moved");
            json_.boolean(true);
        }
        if (const auto oldID = report_.tree->oldID(match)) {
            json_.member("renamedFrom", *oldID);
        }
        writePosition(compared.positions);
        for (const Side side : sides) {
            json_.key(memberOf(side));
            writeEnd(compared.edit[side]);
        }
        writeDetail(match);
        json_.key("children");
        json_.beginArray();
        const std::size_t next = writeChildren(index);
        json_.endArray();
        json_.endObject();
        return next;
    }

    std::size_t writeChildren(std::size_t parent) {
        const auto& entries = report_.tree->entries();
        std::size_t next = parent + 1;
        while (next < entries.size() && entries[next].parent == parent) {
            next = leadsToVisible_[next] ? writeEntry(next) : after(next);
        }
        return next;
    }

    [[nodiscard]] std::size_t after(std::size_t index) const {
        const auto& entries = report_.tree->entries();
        std::size_t next = index + 1;
        while (next < entries.size() && entries[next].parent >= index) {
            ++next;
        }
        return next;
    }

    void writeDetail(Match match) {
        const auto viewModel = report_.tree->shownDetail(match);
        json_.key("metrics");
        if (viewModel) {
            writeMetrics(viewModel->metrics(), json_);
        } else {
            json_.null();
        }
        json_.key("detail");
        if (viewModel) {
            writeViewModel(*viewModel, json_);
        } else {
            json_.null();
        }
    }

    void writePosition(const std::array<std::optional<std::uint32_t>, 2>& positions) {
        json_.key("position");
        json_.beginArray();
        for (const auto& position : positions) {
            if (position) {
                json_.number(*position);
            } else {
                json_.null();
            }
        }
        json_.endArray();
    }

    void writeEnd(const std::optional<Item>& item) {
        if (!item) {
            json_.null();
            return;
        }
        json_.beginObject();
        std::visit(*this, *item);
        json_.endObject();
    }

    const Report& report_;
    std::vector<bool> leadsToVisible_ = report_.tree->leadsToVisible();
    JsonWriter json_;
};

}  // namespace

void writeJsonReport(const Report& report, Output& output) {
    JsonReport(report, output).write();
    output.write("\n");
}

}  // namespace depcompare
