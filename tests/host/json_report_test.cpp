#include "reports/json_report.h"

#include <fl/i18n/locale.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"

namespace depcompare {
namespace {

using nlohmann::json;
using test::compare;
using test::graphML;
using test::jsonOf;

json counts(int added, int removed, int changed, int unchanged) {
    return {{"added", added}, {"removed", removed}, {"changed", changed}, {"unchanged", unchanged}};
}

// "kind edit [left,right] what" per entry, indented by its depth.
std::string outline(const json& entry, int depth = 0) {
    const json& end = entry["right"].is_null() ? entry["left"] : entry["right"];
    std::string line = std::string(static_cast<std::size_t>(depth) * 2, ' ') +
                       entry["kind"].get<std::string>() + " " + entry["edit"].get<std::string>() +
                       " " + entry["position"].dump();
    for (const char* name : {"id", "upstream", "downstream"}) {
        line += end.contains(name) ? " " + end[name].get<std::string>() : "";
    }
    line += entry.contains("moved") ? " moved\n" : "\n";
    for (const json& child : entry["children"]) {
        line += outline(child, depth + 1);
    }
    return line;
}

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

TEST(JsonReport, everyMemberOfTheContractIsThere) {
    const json report = jsonOf(compare(oldFile, newFile));
    EXPECT_EQ(report["format"], "depcompare-report");
    EXPECT_EQ(report["version"], 1);
    EXPECT_EQ(report["locale"], fl::i18n::Locale::global().name());
    EXPECT_EQ(report["filters"], json::array());
    EXPECT_EQ(report["left"], (json{{"source", "old"},
                                    {"nodes", 3},
                                    {"files", 2},
                                    {"dependencies", 4},
                                    {"analysisTime", "2026-01-02T03:04:05"}}));
    EXPECT_EQ(report["right"], (json{{"source", "new"},
                                     {"nodes", 3},
                                     {"files", 2},
                                     {"dependencies", 2},
                                     {"analysisTime", nullptr}}));
    EXPECT_EQ(report["tree"]["left"], json::object());
    const json& file = report["tree"]["children"][0];
    EXPECT_EQ(file["visible"], true);
    EXPECT_EQ(file["metrics"], nullptr);
    EXPECT_EQ(file["detail"], nullptr);
    EXPECT_EQ(file["left"], (json{{"id", "a"}, {"name", "a"}, {"type", "file"}}));
    const json& group = file["children"][0];
    EXPECT_EQ(group["kind"], "group");
    EXPECT_EQ(group["edit"], "changed");
    EXPECT_EQ(group["left"], (json{{"upstream", "a"},
                                   {"downstream", "x"},
                                   {"downstreamName", "X"},
                                   {"downstreamType", "ext"}}));
    EXPECT_EQ(file["children"][1]["right"], nullptr);
    EXPECT_FALSE(file["children"][2].contains("moved"));
}

TEST(JsonReport, theTreeStandsInDisplayOrder) {
    EXPECT_EQ(outline(jsonOf(compare(oldFile, newFile))["tree"]),
              "graph changed [null,null]\n"
              "  file changed [0,0] a\n"
              "    group changed [0,0] a x\n"
              "    group removed [1,null] a b\n"
              "    group added [null,1] a c\n"
              "  file removed [1,null] b\n"
              "  file added [null,1] c\n");
}

TEST(JsonReport, groupsThatChangePlacesAreMoved) {
    const auto file = [](const char* nameOfB) {
        return graphML("<node id='a'/><node id='b'><data key='name'>" + std::string(nameOfB) +
                       "</data></node><node id='c'/><node id='d'/><edge source='a' target='b'/>"
                       "<edge source='a' target='c'/><edge source='a' target='d'/>");
    };
    EXPECT_EQ(outline(jsonOf(compare(file("b"), file("e")))["tree"]["children"][0]),
              "file unchanged [0,0] a\n"
              "  group unchanged [1,0] a c\n"
              "  group unchanged [2,1] a d\n"
              "  group changed [0,2] a b moved\n");
}

TEST(JsonReport, theSummaryCountsEntriesAndRows) {
    const json summary = jsonOf(compare(oldFile, newFile))["summary"];
    EXPECT_EQ(summary, (json{{"files", counts(1, 1, 1, 0)},
                             {"groups", counts(1, 1, 1, 0)},
                             {"dependencies", counts(2, 2, 0, 0)},
                             {"fileProperties", counts(1, 0, 1, 0)},
                             {"graphProperties", counts(0, 1, 0, 1)}}));
}

TEST(JsonReport, textsSurviveTheirEscapes) {
    const json report = jsonOf(
        compare(graphML("<node id='q&quot;\\&#10;&#9;&#x7f;\xF0\x9F\x98\x80'/>"), graphML("")));
    EXPECT_EQ(report["tree"]["children"][0]["left"]["id"], "q\"\\\n\t\x7f\xF0\x9F\x98\x80");
}

TEST(JsonReport, idsWhoseConcatenationsCoincideCompareLikeAnyOthers) {
    const std::string nodes = "<node id='a'/><node id='ab'/><node id='bc'/><node id='c'/>";
    const std::string one = "<edge source='a' target='bc'/>";
    const std::string other = "<edge source='ab' target='c'/>";
    EXPECT_EQ(outline(jsonOf(compare(graphML(nodes + one), graphML(nodes + one + other)))["tree"]),
              "graph unchanged [null,null]\n"
              "  file unchanged [0,0] a\n"
              "    group unchanged [0,0] a bc\n"
              "  file unchanged [1,1] ab\n"
              "    group added [null,0] ab c\n"
              "  file unchanged [2,2] bc\n"
              "  file unchanged [3,3] c\n");
    EXPECT_EQ(outline(jsonOf(compare(graphML("<node id=''/><edge source='' target=''/>"),
                                     graphML("<node id=''/>")))["tree"]),
              "graph unchanged [null,null]\n"
              "  file unchanged [0,0] \n"
              "    group removed [0,null]  \n");
}

}  // namespace
}  // namespace depcompare
