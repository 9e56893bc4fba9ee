#include "reports/json/json_overview.h"

#include <string_view>
#include <utility>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <fl/i18n/ustring.h>

namespace depcompare {

void writeJsonInput(const Report& report, std::size_t side, JsonWriter& json) {
    const LoadedGraph& input = report.inputs[side];
    json.beginObject();
    json.member("source", fl::i18n::utf8_to_ustring(report.arguments[side]));
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

void writeJsonSummary(const Summary& summary, JsonWriter& json) {
    json.beginObject();
    for (const auto& [name, counts] :
         {std::pair<std::string_view, const EditCounts&>{"files", summary.files},
          {"groups", summary.groups},
          {"dependencies", summary.dependencies},
          {"fileProperties", summary.fileProperties},
          {"graphProperties", summary.graphProperties}}) {
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

}  // namespace depcompare
