#include "reports/json/json_report.h"

#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include <comparisons/side.h>
#include <fl/i18n/locale.h>

#include "draft/marked_id.h"
#include "output/json_writer.h"
#include "reports/json/json_detail.h"
#include "reports/json/json_overview.h"

namespace depcompare {

namespace {

using ::comparisons::indexOf;
using ::comparisons::Side;
using ::comparisons::sides;
using dependency::comparisons::Item;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using Match = PresentedTree::Match;

struct KindOf {
    std::string_view operator()(const std::shared_ptr<const Graph>& /*graph*/) const {
        return "graph";
    }
    std::string_view operator()(const std::shared_ptr<Node>& /*node*/) const { return "file"; }
    std::string_view operator()(const ParallelDependencies& /*group*/) const { return "group"; }
};

class JsonReport {
  public:
    JsonReport(const Report& report, Output& output) : report_(report), json_(output) {}

    void write() {
        json_.beginObject();
        json_.member("format", "depcompare-report");
        json_.key("version");
        json_.number(1);
        json_.member("locale", fl::i18n::Locale::global().name());
        json_.key("filters");
        json_.beginArray();
        for (const Filters& filter : report_.tree->filters()) {
            json_.text(nameOf(filter));
        }
        json_.endArray();
        for (const Side side : sides) {
            json_.key(memberOf(side));
            writeJsonInput(report_, indexOf(side), json_);
        }
        json_.key("summary");
        writeJsonSummary(report_.summary, json_);
        json_.key("ledger");
        writeJsonLedger(report_.ledger, json_);
        json_.key("tree");
        writeEntry(0);
        json_.endObject();
    }

    // The ends of an entry, by the kind of item.
    void operator()(const std::shared_ptr<const Graph>& /*graph*/) {}
    void operator()(const std::shared_ptr<Node>& file) {
        json_.member("id", idAsRead(file->getID()));
        json_.member("name", file->getName());
        json_.member("type", file->getType()->getID());
    }
    void operator()(const ParallelDependencies& group) {
        json_.member("upstream", idAsRead(group.upstream->getID()));
        json_.member("downstream", idAsRead(group.downstream->getID()));
        json_.member("downstreamName", group.downstream->getName());
        json_.member("downstreamType", group.downstream->getType()->getID());
    }

  private:
    /// Returns: the place of the entry behind this one and all below it.
    std::size_t writeEntry(std::size_t index) {
        const auto& entry = report_.tree->entries()[index];
        const Match match = entry.match;
        const auto& compared = report_.tree->compared(match);
        json_.breakLine();
        json_.beginObject();
        json_.member("kind", std::visit(KindOf(), ::comparisons::anySide(compared.edit)));
        json_.member("edit", nameOf(match->getEditTypes().front()));
        json_.key("visible");
        json_.boolean(entry.visible != 0);
        if (match->getIsOrderMove().any() || match->getIsHierMove().any()) {
            json_.key("moved");
            json_.boolean(true);
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
            next = leadsToVisible_[next] ? writeEntry(next) : behind(next);
        }
        return next;
    }

    [[nodiscard]] std::size_t behind(std::size_t index) const {
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
            writeJsonMetrics(viewModel->metrics(), json_);
        } else {
            json_.null();
        }
        json_.key("detail");
        if (viewModel) {
            writeJsonDetail(*viewModel, json_);
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
