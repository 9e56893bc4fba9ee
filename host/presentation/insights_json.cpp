#include "presentation/insights_json.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace depcompare {

namespace {

using insight::BySide;
using insight::Number;

std::string_view wordOf(insight::Edit edit) {
    switch (edit) {
        case insight::Edit::added:
            return "added";
        case insight::Edit::removed:
            return "removed";
        case insight::Edit::common:
            break;
    }
    return "common";
}

std::string_view wordOf(insight::CycleEdit edit) {
    switch (edit) {
        case insight::CycleEdit::added:
            return "added";
        case insight::CycleEdit::removed:
            return "removed";
        case insight::CycleEdit::changed:
            break;
    }
    return "changed";
}

class InsightsWriter {
  public:
    InsightsWriter(const Insights& insights, JsonWriter& json)
        : insights_(insights), graph_(insights.graph), json_(json) {}

    void write() {
        json_.beginObject();
        json_.key("cycles");
        writeCycles(insights_.cycles);
        json_.key("hardCycles");
        writeOrNull(insights_.hardCycles, [&](const auto& cycles) { writeCycles(cycles); });
        json_.key("reach");
        writeOrNull(insights_.reach, [&](const auto& reach) { writeReach(reach); });
        json_.key("areas");
        writeAreas();
        json_.key("others");
        writeOthers();
        writeList("renames", insights_.renames, [&](const auto& rename) { writeRename(rename); });
        json_.key("causes");
        writeCauses();
        json_.endObject();
    }

  private:
    template <class Value, class Write>
    void writeOrNull(const std::optional<Value>& value, const Write& write) {
        if (value) {
            write(*value);
        } else {
            json_.null();
        }
    }

    template <class Values, class Write>
    void writeList(std::string_view name, const Values& values, const Write& write) {
        json_.key(name);
        json_.beginArray();
        for (const auto& value : values) {
            json_.breakLine();
            write(value);
        }
        json_.endArray();
    }

    void writeID(Number node) { json_.text(graph_.id(node)); }

    void writeID(std::string_view name, Number node) { json_.member(name, graph_.id(node)); }

    void writeIDs(std::span<const Number> nodes) {
        json_.beginArray();
        for (const Number node : nodes) {
            writeID(node);
        }
        json_.endArray();
    }

    void writeIDs(std::string_view name, std::span<const Number> nodes) {
        json_.key(name);
        writeIDs(nodes);
    }

    void writeLinks(std::string_view name, std::span<const insight::Link> links) {
        json_.key(name);
        json_.beginArray();
        for (const auto& [upstream, downstream] : links) {
            writeIDs(std::array{upstream, downstream});
        }
        json_.endArray();
    }

    void writeCounts(std::string_view name, const BySide<std::size_t>& counts) {
        json_.key(name);
        json_.beginArray();
        json_.number(counts.left);
        json_.number(counts.right);
        json_.endArray();
    }

    void writeCycles(const insight::Cycles& cycles) {
        json_.beginObject();
        json_.member("left", cycles.groups.left);
        json_.member("right", cycles.groups.right);
        json_.member("unchanged", cycles.unchanged);
        writeList("families", cycles.families, [&](const insight::CycleFamily& family) {
            json_.beginObject();
            json_.member("edit", wordOf(family.edit));
            writeGroups("left", family.groups.left);
            writeGroups("right", family.groups.right);
            writeLinks("closing", family.closing);
            writeLinks("opened", family.opened);
            writeIDs("cycle", family.cycle);
            json_.endObject();
        });
        json_.endObject();
    }

    void writeGroups(std::string_view name, const std::vector<std::vector<Number>>& groups) {
        json_.key(name);
        json_.beginArray();
        for (const auto& group : groups) {
            writeIDs(group);
        }
        json_.endArray();
    }

    void writeReach(const insight::Reach& reach) {
        json_.beginObject();
        writeSideReach("left", reach.sides.left);
        writeSideReach("right", reach.sides.right);
        writeList("files", reach.files, [&](const insight::FileReach& file) {
            json_.beginObject();
            writeID("file", file.file);
            json_.member("left", file.reach.left);
            json_.member("right", file.reach.right);
            json_.member("gained", file.gained);
            json_.member("lost", file.lost);
            writeIDs("path", file.path);
            json_.endObject();
        });
        json_.member("filesAll", reach.filesAll);
        writeList("links", reach.links, [&](const insight::LinkReach& link) {
            json_.beginObject();
            writeID("upstream", link.link.upstream);
            writeID("downstream", link.link.downstream);
            json_.member("gained", link.gained);
            json_.member("dependents", link.dependents);
            json_.endObject();
        });
        json_.member("linksAll", reach.linksAll);
        json_.endObject();
    }

    void writeSideReach(std::string_view name, const insight::SideReach& side) {
        json_.key(name);
        json_.beginObject();
        json_.member("pairs", side.pairs);
        json_.key("cost");
        json_.real(side.cost);
        json_.endObject();
    }

    void writeAreas() {
        const auto& [depth, areas, links] = insights_.areas;
        json_.beginObject();
        json_.key("depth");
        if (insights_.areaProperty) {
            json_.null();
            json_.member("property", *insights_.areaProperty);
        } else {
            json_.number(depth);
            json_.key("property");
            json_.null();
        }
        writeList("areas", areas, [&](const insight::Area& area) {
            json_.beginObject();
            json_.member("area", area.name);
            writeCounts("files", area.files);
            json_.member("added", area.added);
            json_.member("removed", area.removed);
            json_.member("changed", area.changed);
            writeCounts("inside", area.inside);
            writeCounts("out", area.out);
            writeCounts("in", area.in);
            json_.endObject();
        });
        writeList("links", links, [&](const insight::AreaLink& link) {
            json_.beginObject();
            json_.member("from", insights_.areas.areas[link.from].name);
            json_.member("to", insights_.areas.areas[link.to].name);
            json_.member("left", link.links.left);
            json_.member("right", link.links.right);
            json_.member("added", link.added);
            json_.member("removed", link.removed);
            writeLinks("examples", link.examples);
            json_.endObject();
        });
        json_.endObject();
    }

    void writeOthers() {
        json_.beginObject();
        writeOtherNodes("added", insights_.others.added, insight::Side::right);
        writeOtherNodes("removed", insights_.others.removed, insight::Side::left);
        json_.endObject();
    }

    void writeOtherNodes(std::string_view name, const std::vector<insight::OtherNode>& nodes,
                         insight::Side side) {
        writeList(name, nodes, [&](const insight::OtherNode& other) {
            json_.beginObject();
            writeID("node", other.node);
            json_.member("type", graph_.node(other.node, side)->getType()->getID());
            json_.member("files", other.files);
            json_.endObject();
        });
    }

    void writeRename(const ListedRename& rename) {
        json_.beginObject();
        json_.member("left", rename.ids.left);
        json_.member("right", rename.ids.right);
        json_.key("score");
        json_.real(rename.found.score);
        writeFlag("probable", rename.found.probable());
        writeFlag("ambiguous", rename.found.ambiguous);
        writeFlag("applied", rename.applied);
        json_.key("evidence");
        writeEvidence(rename.found.evidence);
        json_.endObject();
    }

    void writeEvidence(const insight::RenameEvidence& evidence) {
        json_.beginObject();
        json_.key("digest");
        writeOrNull(evidence.digest, [&](const auto& key) { json_.text(key); });
        writeFlag("name", evidence.name);
        json_.key("folder");
        writeOrNull(evidence.folder, [&](const insight::FolderMove& move) {
            json_.beginArray();
            json_.text(move.left);
            json_.text(move.right);
            json_.number(move.others);
            json_.endArray();
        });
        json_.key("neighbours");
        json_.beginArray();
        json_.number(evidence.sharedNeighbours);
        json_.number(evidence.neighbours.left);
        json_.number(evidence.neighbours.right);
        json_.endArray();
        json_.key("properties");
        json_.beginArray();
        json_.number(evidence.equalProperties);
        json_.number(evidence.properties);
        json_.endArray();
        json_.endObject();
    }

    void writeFlag(std::string_view name, bool value) {
        json_.key(name);
        json_.boolean(value);
    }

    void writeCauses() {
        const insight::Causes& causes = insights_.causes;
        json_.beginObject();
        writeLinkCauses("added", causes.added);
        writeLinkCauses("removed", causes.removed);
        json_.key("changed");
        json_.beginObject();
        json_.member("components", causes.changed.components);
        json_.member("types", causes.changed.types);
        json_.member("ends", causes.changed.ends);
        json_.endObject();
        writeList("targets", causes.targets, [&](const insight::Target& target) {
            json_.beginObject();
            writeID("node", target.node);
            json_.member("edit", wordOf(target.edit));
            json_.member("files", target.files);
            json_.endObject();
        });
        writeList("rewired", causes.rewired, [&](const insight::Rewiring& rewiring) {
            json_.beginObject();
            writeID("upstream", rewiring.link.upstream);
            writeID("downstream", rewiring.link.downstream);
            json_.member("edit", wordOf(rewiring.edit));
            json_.endObject();
        });
        json_.endObject();
    }

    void writeLinkCauses(std::string_view name, const insight::LinkCauses& causes) {
        json_.key(name);
        json_.beginObject();
        json_.member("rename", causes.rename);
        json_.member("file", causes.file);
        json_.member("target", causes.target);
        json_.member("rewiring", causes.rewiring);
        json_.endObject();
    }

    const Insights& insights_;
    const insight::LinkGraph& graph_;
    JsonWriter& json_;
};

}  // namespace

void writeInsights(const Insights& insights, JsonWriter& json) {
    InsightsWriter(insights, json).write();
}

}  // namespace depcompare
