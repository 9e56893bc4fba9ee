#include "reports/json_report.h"

#include <memory>
#include <optional>
#include <string_view>
#include <variant>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <comparisons/edit_type.h>
#include <comparisons/side.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/ustring.h>

#include "readers/node_id.h"
#include "reports/json_writer.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using ::comparisons::indexOf;
using ::comparisons::Side;
using ::comparisons::sides;
using dependency::comparisons::GraphComparison;
using dependency::comparisons::Item;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;

std::string_view nameOf(Side side) {
    return indexOf(side) == 0 ? "left" : "right";
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
        member("format", "depcompare-report");
        json_.key("version");
        json_.number(1);
        member("locale", fl::i18n::Locale::global().name());
        json_.key("filters");
        json_.beginArray();
        json_.endArray();
        for (const Side side : sides) {
            json_.key(nameOf(side));
            writeInput(indexOf(side));
        }
        writeSummary();
        json_.key("tree");
        writeEntry({.vertex = report_.comparison->root()});
        json_.endObject();
    }

    // The ends of an entry, by the kind of item.
    void operator()(const std::shared_ptr<const Graph>& /*graph*/) {}
    void operator()(const std::shared_ptr<Node>& file) {
        member("id", idAsRead(file->getID()));
        member("name", file->getName());
        member("type", file->getType()->getID());
    }
    void operator()(const ParallelDependencies& group) {
        member("upstream", idAsRead(group.upstream->getID()));
        member("downstream", idAsRead(group.downstream->getID()));
        member("downstreamName", group.downstream->getName());
        member("downstreamType", group.downstream->getType()->getID());
    }

  private:
    void member(std::string_view name, std::string_view utf8) {
        json_.key(name);
        json_.text(utf8);
    }

    void member(std::string_view name, std::u16string_view text) {
        json_.key(name);
        json_.text(text);
    }

    void member(std::string_view name, std::uint64_t number) {
        json_.key(name);
        json_.number(number);
    }

    void writeInput(std::size_t side) {
        const LoadedGraph& input = report_.inputs[side];
        json_.beginObject();
        member("source", fl::i18n::utf8_to_ustring(report_.arguments[side]));
        member("nodes", input.nodes);
        member("files", input.files);
        member("dependencies", input.dependencies);
        json_.key("analysisTime");
        if (input.analysisTime.is_not_a_date_time()) {
            json_.null();
        } else {
            const auto fraction = boost::posix_time::time_duration(
                0, 0, 0, input.analysisTime.time_of_day().fractional_seconds());
            json_.text(boost::posix_time::to_iso_extended_string(input.analysisTime - fraction));
        }
        json_.endObject();
    }

    void writeSummary() {
        const Summary& summary = report_.summary;
        json_.key("summary");
        json_.beginObject();
        for (const auto& [name, counts] :
             {std::pair<std::string_view, const EditCounts&>{"files", summary.files},
              {"groups", summary.groups},
              {"dependencies", summary.dependencies},
              {"fileProperties", summary.fileProperties},
              {"graphProperties", summary.graphProperties}}) {
            json_.key(name);
            json_.beginObject();
            member("added", counts.added);
            member("removed", counts.removed);
            member("changed", counts.changed);
            member("unchanged", counts.unchanged);
            json_.endObject();
        }
        json_.endObject();
    }

    void writeEntry(const GraphComparison::Child& child) {
        const auto& entry = (*report_.comparison)[child.vertex];
        json_.breakLine();
        json_.beginObject();
        member("kind", std::visit(KindOf(), ::comparisons::anySide(entry.edit)));
        member("edit", nameOf(::comparisons::editType(entry.edit)));
        json_.key("visible");
        json_.boolean(true);
        if (child.orderMove || child.hierarchyMove) {
            json_.key("moved");
            json_.boolean(true);
        }
        writePosition(entry.positions);
        for (const Side side : sides) {
            json_.key(nameOf(side));
            writeEnd(entry.edit[side]);
        }
        for (const std::string_view name : {"metrics", "detail"}) {
            json_.key(name);
            json_.null();
        }
        json_.key("children");
        json_.beginArray();
        for (const auto& grandchild : report_.comparison->children(child.vertex)) {
            writeEntry(grandchild);
        }
        json_.endArray();
        json_.endObject();
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
    JsonWriter json_;
};

}  // namespace

void writeJsonReport(const Report& report, Output& output) {
    JsonReport(report, output).write();
    output.write("\n");
}

}  // namespace depcompare
