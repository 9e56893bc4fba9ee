#include "reports/json_report.h"

#include <fstream>
#include <iterator>
#include <set>

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
    EXPECT_EQ(file["metrics"], (json{0, 1, 1, 0}));
    EXPECT_EQ(file["detail"], (json{{"type", "parameter"},
                                    {"columns", {"File property", ""}},
                                    {"metrics", {0, 1, 1, 0}},
                                    {"rows",
                                     {{{"edit", "changed"},
                                       {"left", {{"name", "k"}, {"value", "1"}}},
                                       {"right", {{"name", "k"}, {"value", "2"}}}},
                                      {{"edit", "added"},
                                       {"left", nullptr},
                                       {"right", {{"name", "l"}, {"value", "3"}}}}}}}));
    EXPECT_EQ(file["left"], (json{{"id", "a"}, {"name", "a"}, {"type", "file"}}));
    const json& group = file["children"][0];
    EXPECT_EQ(group["kind"], "group");
    EXPECT_EQ(group["edit"], "changed");
    EXPECT_EQ(group["metrics"], (json{1, 1, 0, 0}));
    EXPECT_EQ(group["detail"]["type"], "combined");
    EXPECT_EQ(group["detail"]["parts"].size(), 2U);
    EXPECT_EQ(
        group["detail"]["parts"][1],
        (json{{"type", "parameter"},
              {"columns", {"Dependency type: use\n\nImpacted component", "\n\nRequired component"}},
              {"metrics", {0, 1, 0, 0}},
              {"rows",
               {{{"edit", "added"},
                 {"left", nullptr},
                 {"right", {{"name", "a"}, {"value", "X"}}}}}}}));
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
    const json& context = report["tree"]["children"][0];
    EXPECT_EQ(context["visible"], false);
    EXPECT_EQ(context["metrics"], (json{0, 1, 0, 0}));
    EXPECT_EQ(context["detail"]["rows"].size(), 1U);
    EXPECT_EQ(jsonOf(compare(oldFile, oldFile, filtersNamed({"unchanged"})))["tree"]["children"],
              json::array());
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

TEST_P(JsonReportInLocale, everyMemberIsInOrderUnderEveryFilterSetting) {
    const std::pair<std::string, std::string> pairs[] = {
        {oldFile, newFile},
        {newFile, oldFile},
        {oldFile, oldFile},
        {graphML(""), newFile},
        {bundled("ninja-v1.8.2.graphml"), bundled("ninja-v1.12.1.graphml")},
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

TEST_P(JsonReportInLocale, theSpecialRowsAreNoStructureWhateverTheyAreCalled) {
    const std::string bare = graphML("");
    const std::string right = graphML(
        "<data key='timestamp'>2026-01-01</data><data key='note'>x</data>"
        "<node id='a'><data key='checksum'>1</data><data key='k'>1</data></node>");
    const json tree = jsonOf(compare(bare, right, filtersNamed({"nonstructural"})))["tree"];
    ASSERT_EQ(tree["detail"]["rows"].size(), 1U);
    EXPECT_EQ(tree["detail"]["rows"][0]["right"]["name"], "note");
    ASSERT_EQ(tree["children"][0]["detail"]["rows"].size(), 1U);
    EXPECT_EQ(tree["children"][0]["detail"]["rows"][0]["right"]["name"], "k");
}

TEST(JsonReport, columnsSpeakTheLanguageOfTheLocale) {
    std::set<std::string> headings;
    for (const char* locale : {"en", "de", "ja"}) {
        fl::i18n::Locale::setGlobal(fl::i18n::Locale(locale));
        const json tree = jsonOf(compare(oldFile, newFile))["tree"];
        headings.insert(tree["detail"]["columns"][0]);
        headings.insert(tree["children"][0]["detail"]["columns"][0]);
    }
    fl::i18n::Locale::setGlobal(fl::i18n::Locale());
    EXPECT_EQ(headings.size(), 6U);
}

// The checker of the tests above must see what it is for.
TEST(JsonFaults, aSpoiltReportHasFaults) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "/tree/children/0/position/0"},
        {{}, "/tree/children/2/position/1"},
        {{"nonstructural"}, "/tree/visible"},
        {{"nonstructural"}, "/tree/children/0/children"},
        {{"nonstructural"}, "/tree/children/0/left/name"},
        {{"nonstructural"}, "/tree/children/1/metrics"},
        {{"unchanged"}, "/tree/children/0/children/0/detail/parts/0/rows"},
        {{"unchanged"}, "/left/dependencies"},
        {{"unchanged"}, "/ledger/left/folded"},
        {{"unchanged"}, "/ledger/filters/0/rows"},
        {{"unchanged"}, "/ledger/entries/visible"},
        {{"unchanged"}, "/summary/files/added"},
    };
    for (const auto& [filters, pointer] : cases) {
        json spoilt = jsonOf(compare(oldFile, newFile, filtersNamed(filters)));
        ASSERT_THAT(test::faultsOf(spoilt), testing::IsEmpty());
        json& value = spoilt[json::json_pointer(pointer)];
        if (value.is_boolean()) {
            value = !value.get<bool>();
        } else if (value.is_number()) {
            value = value.get<int>() + 1;
        } else if (value.is_array()) {
            value.erase(value.size() - 1);
        } else {
            value = nullptr;
        }
        EXPECT_THAT(test::faultsOf(spoilt), testing::Not(testing::IsEmpty())) << pointer;
    }
}

}  // namespace
}  // namespace depcompare
