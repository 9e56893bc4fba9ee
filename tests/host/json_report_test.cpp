#include "reports/json/json_report.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"

namespace depcompare {
namespace {

using nlohmann::json;
using test::compare;
using test::graphOf;
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
    line += entry.contains("moved") ? " moved\n" : "\n";
    for (const json& child : entry["children"]) {
        line += outline(child, depth + 1);
    }
    return line;
}

// `x` comes after `y` and `z` when it is renamed.
std::string oldFile() {
    return graphOf(
        "@ timestamp=2026-01-02T03:04:05.75+00:00 version=1; a k=1; b; x type=ext name=X;"
        "y type=ext name=Y; z type=ext name=Y2; a>b; a>b; a>x; a>y; a>z; x>a");
}
std::string newFile() {
    return graphOf(
        "@ version=1; a k=2 l=3; c name=C; x type=ext name=Z; y type=ext name=Y; z type=ext "
        "name=Y2; a>c; a>y; a>z;"
        "a>x type=use");
}

TEST(JsonReport, entriesHaveTheirSidesTheirRowsAndWhatTheseAddUpTo) {
    const json report = jsonOf(compare(oldFile(), newFile()));
    EXPECT_EQ(report["left"], json::parse(R"({"source": "old", "nodes": 5, "files": 2,
        "dependencies": 6, "analysisTime": "2026-01-02T03:04:05"})"));
    EXPECT_EQ(report["right"]["analysisTime"], nullptr);
    const json nothing = {{"nodes", 0},
                          {"dependencies", 0},
                          {"properties", 0},
                          {"buildProperties", 0},
                          {"components", 0}};
    json ledger = report["ledger"];
    for (const char* side : {"left", "right"}) {
        EXPECT_EQ(ledger[side]["leftOut"], nothing);
        ledger[side].erase("leftOut");
    }
    EXPECT_EQ(ledger, json::parse(R"({
        "left": {"nodes": 5, "files": 2, "otherNodes": {"ext": 3}, "dependencies": 6, "compared": 4,
                 "folded": 1, "leavingOtherNodes": 1, "warnings": []},
        "right": {"nodes": 5, "files": 2, "otherNodes": {"ext": 3}, "dependencies": 4,
                  "compared": 4, "folded": 0, "leavingOtherNodes": 0, "warnings": []},
        "entries": {"all": 9, "visible": 9}, "rows": {"all": 10, "visible": 10}, "filters": [],
        "warnings": []})"));
    EXPECT_EQ(report["summary"], json::parse(R"({
        "files": {"added": 1, "removed": 1, "changed": 1, "unchanged": 0},
        "groups": {"added": 1, "removed": 1, "changed": 1, "unchanged": 2},
        "dependencies": {"added": 2, "removed": 2, "changed": 0, "unchanged": 2},
        "fileProperties": {"added": 1, "removed": 0, "changed": 1, "unchanged": 0},
        "graphProperties": {"added": 0, "removed": 1, "changed": 0, "unchanged": 1}})"));
    const json& file = report["tree"]["children"][0];
    EXPECT_EQ(file["left"], json::parse(R"({"id": "a", "name": "a", "type": "file"})"));
    EXPECT_EQ(file["detail"], json::parse(R"({"type": "parameter", "metrics": [0, 1, 1, 0],
        "columns": ["File property", ""],
        "rows": [{"edit": "changed", "left": {"name": "k", "value": "1"},
                                     "right": {"name": "k", "value": "2"}},
                 {"edit": "added", "left": null, "right": {"name": "l", "value": "3"}}]})"));
    const json& group = file["children"][3];
    EXPECT_EQ(group["left"], json::parse(R"({"upstream": "a", "downstream": "x",
        "downstreamName": "X", "downstreamType": "ext"})"));
    EXPECT_EQ(group["metrics"], (json{1, 1, 0, 0}));
    EXPECT_EQ(group["detail"]["parts"][1], json::parse(R"({"type": "parameter",
        "metrics": [0, 1, 0, 0],
        "columns": ["Dependency type: use\n\nImpacted component", "\n\nRequired component"],
        "rows": [{"edit": "added", "left": null, "right": {"name": "a", "value": "Z"}}]})"));
}

TEST(JsonReport, whatIsHiddenIsLeftOutUnlessSomethingBelowItIsVisible) {
    const json report = jsonOf(compare(oldFile(), newFile(), filtersNamed({"nonstructural"})));
    EXPECT_EQ(outline(report["tree"]),
              "graph changed [null,null]\n"
              "  file changed [0,0] a\n"
              "    group removed [3,null] a b\n"
              "    group changed [0,2] a x moved\n"
              "    group added [null,3] a c\n"
              "  file removed [1,null] b\n"
              "  file added [null,1] c\n");
    EXPECT_EQ(report["tree"]["visible"], false);
    EXPECT_EQ(report["tree"]["children"][0]["visible"], false);
}

}  // namespace
}  // namespace depcompare
