#include "presentation/account_json.h"

#include <string>
#include <vector>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <fl/i18n/ustring.h>

#include "draft/marked_id.h"

namespace depcompare {

namespace {

using ::comparisons::indexOf;
using ::comparisons::RowCount;
using ::comparisons::Side;
using ::comparisons::sides;

void writeInput(const Report& report, Side side, JsonWriter& json) {
    const LoadedGraph& input = report.inputs[indexOf(side)];
    json.beginObject();
    json.member("source", fl::i18n::utf8_to_ustring(report.arguments[indexOf(side)]));
    json.member("nodes", input.nodes);
    json.member("files", input.files);
    json.member("dependencies", input.dependencies);
    json.key("analysisTime");
    if (input.analysisTime.is_not_a_date_time()) {
        json.null();
    } else {
        const auto fraction = boost::posix_time::time_duration(
            0, 0, 0, input.analysisTime.time_of_day().fractional_seconds());
        json.text(boost::posix_time::to_iso_extended_string(input.analysisTime - fraction));
    }
    json.endObject();
}

void writeSummary(const Summary& summary, JsonWriter& json) {
    json.beginObject();
    for (const auto& [name, title, counts] : summary.byKind()) {
        json.key(name);
        json.beginObject();
        json.member("added", counts.added);
        json.member("removed", counts.removed);
        json.member("changed", counts.changed);
        json.member("unchanged", counts.unchanged);
        json.endObject();
    }
    json.endObject();
}

void writeWarnings(const std::vector<std::string>& warnings, JsonWriter& json) {
    json.key("warnings");
    json.beginArray();
    for (const std::string& warning : warnings) {
        json.text(warning);
    }
    json.endArray();
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
    json.key("leftOut");
    json.beginObject();
    json.member("nodes", side.leftOut.nodes);
    json.member("dependencies", side.leftOut.dependencies);
    json.member("properties", side.leftOut.properties);
    json.member("buildProperties", side.leftOut.buildProperties);
    json.member("components", side.leftOut.components);
    json.endObject();
    writeWarnings(side.warnings, json);
    json.endObject();
}

void writeRowCount(std::string_view name, const RowCount& count, JsonWriter& json) {
    json.key(name);
    json.beginObject();
    json.member("all", count.all);
    json.member("visible", count.visible);
    json.endObject();
}

void writeCounts(const EntryCounts& entries, std::size_t rows, JsonWriter& json) {
    json.member("entries", entries.all());
    json.member("files", entries.files);
    json.member("groups", entries.groups);
    json.member("rows", rows);
}

void writeHidden(const HiddenByFilter& hidden, JsonWriter& json) {
    json.beginObject();
    json.member("filter", nameOf(hidden.filter));
    writeCounts(hidden.entries, hidden.rows, json);
    json.key("differing");
    json.beginObject();
    writeCounts(hidden.differingEntries, hidden.differingRows, json);
    json.endObject();
    json.endObject();
}

void writeLedger(const Ledger& ledger, JsonWriter& json) {
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
    writeWarnings(ledger.warnings, json);
    json.endObject();
}

void writeTelling(const TellingKeys& keys, const VersionCounts& versions, JsonWriter& json) {
    json.key("telling");
    json.beginArray();
    for (const std::u16string& key : keys) {
        json.text(key);
    }
    json.endArray();
    json.key("versions");
    json.beginObject();
    json.member("up", versions.up);
    json.member("down", versions.down);
    json.member("other", versions.other);
    json.endObject();
}

}  // namespace

std::string_view memberOf(Side side) {
    return side == Side::left ? "left" : "right";
}

std::u16string_view idOf(const dependency::graph::Node& node) {
    return idAsRead(node.getID());
}

void writeAccount(const Report& report, JsonWriter& json) {
    for (const Side side : sides) {
        json.key(memberOf(side));
        writeInput(report, side, json);
    }
    json.key("summary");
    writeSummary(report.summary, json);
    json.key("ledger");
    writeLedger(report.ledger, json);
    if (report.versions) {
        writeTelling(report.tree->telling(), *report.versions, json);
    }
}

}  // namespace depcompare
