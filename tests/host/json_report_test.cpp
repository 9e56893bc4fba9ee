#include "reports/json/json_report.h"

#include <fstream>
#include <iterator>

#include <fl/i18n/locale.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"
#include "json_faults.h"

namespace depcompare {
namespace {

using nlohmann::json;
using test::compare;
using test::graphML;
using test::jsonOf;

// "kind edit [left,right] what" per entry, indented by its depth.
std::string outline(const json& entry, int depth = 0) {
    const json& end = entry["right"].is_null() ? entry["left"] : entry["right"];
    std::string line = std::string(static_cast<std::size_t>(depth) * 2, ' ') +
                       entry["kind"].get<std::string>() + " " + entry["edit"].get<std::string>() +
                       " " + entry["position"].dump();
    for (const char* name : {"id", "upstream", "downstream"}) {
        line += end.contains(name) ? " " + end[name].get<std::string>() : "";
    }
    line += "\n";
    for (const json& child : entry["children"]) {
        line += outline(child, depth + 1);
    }
    return line;
}

// NOLINTBEGIN(cert-err58-cpp): a test that cannot even copy a text may end.
const std::string oldFile = graphML(
    "<data key='timestamp'>2026-01-02T03:04:05.75+00:00</data><data key='version'>1</data>"
    "<node id='a'><data key='k'>1</data></node><node id='b'/>"
    "<node id='x'><data key='type'>ext</data><data key='name'>X</data></node>"
    "<edge source='a' target='b'/><edge source='a' target='b'/><edge source='a' target='x'/>"
    "<edge source='x' target='a'/>");
const std::string newFile = graphML(
    "<data key='version'>1</data>"
    "<node id='a'><data key='k'>2</data><data key='l'>3</data></node>"
    "<node id='c'><data key='name'>C</data></node>"
    "<node id='x'><data key='type'>ext</data><data key='name'>X</data></node>"
    "<edge source='a' target='c'/><edge source='a' target='x'><data key='type'>use</data></edge>");
// NOLINTEND(cert-err58-cpp)

TEST(JsonReport, entriesHaveTheirSidesTheirRowsAndWhatTheseAddUpTo) {
    const json report = jsonOf(compare(oldFile, newFile));
    EXPECT_EQ(report["left"], json::parse(R"({"source": "old", "nodes": 3, "files": 2,
        "dependencies": 4, "analysisTime": "2026-01-02T03:04:05"})"));
    EXPECT_EQ(report["right"]["analysisTime"], nullptr);
    EXPECT_EQ(report["ledger"], json::parse(R"({
        "left": {"nodes": 3, "files": 2, "otherNodes": {"ext": 1}, "dependencies": 4, "compared": 2,
                 "folded": 1, "leavingOtherNodes": 1, "warnings": []},
        "right": {"nodes": 3, "files": 2, "otherNodes": {"ext": 1}, "dependencies": 2,
                  "compared": 2, "folded": 0, "leavingOtherNodes": 0, "warnings": []},
        "entries": {"all": 7, "visible": 7}, "rows": {"all": 8, "visible": 8}, "filters": []})"));
    EXPECT_EQ(report["summary"], json::parse(R"({
        "files": {"added": 1, "removed": 1, "changed": 1, "unchanged": 0},
        "groups": {"added": 1, "removed": 1, "changed": 1, "unchanged": 0},
        "dependencies": {"added": 2, "removed": 2, "changed": 0, "unchanged": 0},
        "fileProperties": {"added": 1, "removed": 0, "changed": 1, "unchanged": 0},
        "graphProperties": {"added": 0, "removed": 1, "changed": 0, "unchanged": 1}})"));
    const json& file = report["tree"]["children"][0];
    EXPECT_EQ(file["left"], json::parse(R"({"id": "a", "name": "a", "type": "file"})"));
    EXPECT_EQ(file["detail"], json::parse(R"({"type": "parameter", "metrics": [0, 1, 1, 0],
        "columns": ["File property", ""],
        "rows": [{"edit": "changed", "left": {"name": "k", "value": "1"},
                                     "right": {"name": "k", "value": "2"}},
                 {"edit": "added", "left": null, "right": {"name": "l", "value": "3"}}]})"));
    const json& group = file["children"][0];
    EXPECT_EQ(group["left"], json::parse(R"({"upstream": "a", "downstream": "x",
        "downstreamName": "X", "downstreamType": "ext"})"));
    EXPECT_EQ(group["metrics"], (json{1, 1, 0, 0}));
    EXPECT_EQ(group["detail"]["parts"][1], json::parse(R"({"type": "parameter",
        "metrics": [0, 1, 0, 0],
        "columns": ["Dependency type: use\n\nImpacted component", "\n\nRequired component"],
        "rows": [{"edit": "added", "left": null, "right": {"name": "a", "value": "X"}}]})"));
}

TEST(JsonReport, textsSurviveTheirEscapes) {
    const json report = jsonOf(
        compare(graphML("<node id='q&quot;\\&#10;&#9;&#x7f;\xF0\x9F\x98\x80'/>"), graphML("")));
    EXPECT_EQ(report["tree"]["children"][0]["left"]["id"], "q\"\\\n\t\x7f\xF0\x9F\x98\x80");
}

TEST(JsonReport, whatIsHiddenIsLeftOutUnlessSomethingBelowItIsVisible) {
    const json report = jsonOf(compare(oldFile, newFile, filtersNamed({"nonstructural"})));
    EXPECT_EQ(outline(report["tree"]),
              "graph changed [null,null]\n"
              "  file changed [0,0] a\n"
              "    group changed [0,0] a x\n"
              "    group removed [1,null] a b\n"
              "    group added [null,1] a c\n"
              "  file removed [1,null] b\n"
              "  file added [null,1] c\n");
    EXPECT_EQ(report["tree"]["visible"], false);
    EXPECT_EQ(report["tree"]["children"][0]["visible"], false);
}

// In German and Japanese the labels differ, and with them what the special rows are called.
class JsonReportInLocale : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { fl::i18n::Locale::setGlobal(fl::i18n::Locale(GetParam())); }
    void TearDown() override { fl::i18n::Locale::setGlobal(fl::i18n::Locale()); }

    static std::string bundled(const std::string& name) {
        std::ifstream file(EXAMPLES "/" + name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};
INSTANTIATE_TEST_SUITE_P(Locales, JsonReportInLocale, testing::Values("en", "de", "ja"));

TEST_P(JsonReportInLocale, everySumIsInOrderUnderEveryFilterSetting) {
    const std::pair<std::string, std::string> pairs[] = {
        {oldFile, newFile},
        {oldFile, oldFile},
        {graphML(""), newFile},
        {bundled("ninja-v1.12.1.graphml"), bundled("ninja-v1.8.2.graphml")},
        {bundled("redis-6.2.0.graphml"), bundled("redis-7.4.0.graphml")},
    };
    for (const auto& [left, right] : pairs) {
        for (const EnabledFilters& filters : test::allFilterSettings()) {
            const Report report = compare(left, right, filters);
            const json written = jsonOf(report);
            EXPECT_THAT(test::faultsOf(written), testing::IsEmpty())
                << report.inputs[0].nodes << " nodes, filters " << written["filters"];
            EXPECT_EQ(written["locale"], GetParam());
            EXPECT_EQ(report.tree->showsDifference(), test::showsDifference(written["tree"]));
        }
    }
}

}  // namespace
}  // namespace depcompare
